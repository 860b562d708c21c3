/* Decodes one H.264 CAVLC residual block from a byte buffer and reconstructs it
 * onto a prediction, with only the installed header, huxvc_tables.h and the
 * library: the README's worked example.
 *
 * The bytes hold an Exp-Golomb code (say, a macroblock field), the residual of
 * one 4x4 luma block coded with nC 0 (the standard's textbook block
 *   0 3 -1 0 / 0 -1 1 0 / 1 0 0 0 / 0 0 0 0), and a signed Exp-Golomb code.
 * The program reads them through the word-form cursor, dequantises, inverse
 * transforms and adds the block to a flat prediction of 128 at QP 28, then
 * runs the 8x8 inverse with prediction add and a SAD on the result. It checks
 * every value it decodes and exits non-zero on any difference. */
#include <stdio.h>
#include <string.h>

#include "huxvc.h"
#include "huxvc_tables.h"

/* The stream's bytes: ue 3 ("00100"), the block ("0000100 011 1 0010 111 10 1 1 01"), se -2 ("00101"). */
static const uint8_t kBytes[] = {0x20, 0x47, 0x2F, 0x69, 0x40};

/* The word cursor reads native 32-bit words from bit 31 down: each group of
 * four bytes becomes one word, first byte most significant. The readers may
 * load the word after the one they stop in, so one word of padding follows. */
static size_t to_words(const uint8_t* bytes, size_t n, uint32_t* words, size_t capacity) {
  size_t i, count = (n + 3) / 4 + 1;
  if (count > capacity) return 0;
  memset(words, 0, count * sizeof *words);
  for (i = 0; i < n; ++i) words[i / 4] |= (uint32_t)bytes[i] << (24 - 8 * (i % 4));
  return count;
}

static int check(const char* what, long got, long want) {
  if (got == want) return 0;
  printf("%s: %ld, expected %ld\n", what, got, want);
  return 1;
}

int main(void) {
  static HuxH264CavlcTables tables; /* pointers into itself: built in place, never copied */
  uint32_t words[8], *cursor = words;
  int32_t offset = 31, code = 0, sad = -1, i, bad = 0;
  int16_t numCoeff = -1, packed[16 * 4], *next = packed, dc8x8[64] = {0};
  uint8_t pred[16 * 8], recon[16 * 8];
  /* The textbook block in raster order, as the decoder leaves it. */
  static const int16_t kWant[16] = {0, 3, -1, 0, 0, -1, 1, 0, 1, 0, 0, 0, 0, 0, 0, 0};
  /* Its reconstruction, worked out from the standard's scaling and transform equations. */
  static const uint8_t kRecon[16] = {142, 135, 127, 124, 134, 131, 120, 111, 136, 140, 121, 99, 144, 152, 130, 102};

  if (huxH264BuildCavlcTables(&tables) != huxOk || !to_words(kBytes, sizeof kBytes, words, 8)) return 1;

  bad |= check("ue status", huxiDecodeExpGolombOne_H264_1u32s(&cursor, &offset, &code, 0), huxOk);
  bad |= check("ue value", code, 3);
  bad |= check("CAVLC status",
               huxiDecodeCAVLCCoeffs_H264_1u16s(&cursor, &offset, &numCoeff, &next, 0, 16, tables.coeffToken4x4,
                                                tables.totalZeros4x4, tables.runBefore, huxH264Zigzag4x4),
               huxOk);
  bad |= check("TotalCoeff", numCoeff, 5);
  bad |= check("blocks in the packed buffer", (long)(next - packed), 16);
  for (i = 0; i < 16; ++i) bad |= check("coefficient", packed[i], kWant[i]);
  bad |= check("se status", huxiDecodeExpGolombOne_H264_1u32s(&cursor, &offset, &code, 1), huxOk);
  bad |= check("se value", code, -2);
  bad |= check("bits read", (long)((cursor - words) * 32 + 31 - offset), 34);

  /* Reconstruction: flat LevelScale (no table), QP 28, AC present; the
   * coefficient block serves as work space. */
  memset(pred, 128, sizeof pred);
  bad |= check("reconstruction status",
               huxiTransformQuantInvAddPred4x4_H264_16s_C1IR(pred, 16, packed, NULL, recon, 16, 28, 1, NULL), huxOk);
  printf("reconstructed 4x4 block at QP 28 on a prediction of 128:\n");
  for (i = 0; i < 16; ++i) {
    printf("%4d%s", recon[16 * (i / 4) + i % 4], i % 4 == 3 ? "\n" : "");
    bad |= check("reconstructed sample", recon[16 * (i / 4) + i % 4], kRecon[i]);
  }

  /* An 8x8 block whose only coefficient is a DC of 64: every sample one above the prediction. */
  dc8x8[0] = 64;
  bad |= check("8x8 status", huxiTransformLuma8x8InvAddPred_H264_16s8u_C1R(pred, 16, dc8x8, recon + 8, 16), huxOk);
  bad |= check("8x8 sample", recon[8 + 16 * 7 + 7], 129);
  bad |= check("SAD status", huxiSAD8x8_8u32s_C1R(recon + 8, 16, pred, 16, &sad, 0), huxOk);
  bad |= check("SAD of the 8x8 block against its prediction", sad, 64);
  printf("%s\n", bad ? "FAILED" : "all values as expected");
  return bad;
}
