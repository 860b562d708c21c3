/* A small block-matching motion estimator on huxvc's metrics and motion
 * compensation.
 *
 *   motion_search                         synthetic frames with a known motion field
 *   motion_search cur.y ref.y width height  two raw 8-bit luma frames
 *
 * Each 16x16 macroblock of the current frame is searched over +-8 samples in
 * the reference: one huxiSAD16x16xNI_8u16u_C1R call scores a row of 16
 * candidates and names the best. The sub-sample decision is made on SATD: the
 * half-sample prediction of each of the winner's eight neighbours is formed
 * with huxiCopy16x16HP_8u_C1R and scored with huxiSATD16x16_8u32s_C1R, and each
 * 8x8 quarter is refined the same way (huxiCopy8x8HP_8u_C1R,
 * huxiSATD8x8_8u32s_C1R). The motion-compensated prediction of the frame is
 * then built quarter by quarter with huxiMC8x8_8u_C1 (a zero residual), and its
 * PSNR against the current frame is reported with the time per frame. Only
 * the public header is used. */
#define _POSIX_C_SOURCE 199309L
#include <math.h>
#include <stddef.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

#include "huxvc.h"

enum { kRange = 8, kPad = 32, kMb = 16 };

typedef struct {
  int width, height, stride;
  uint8_t* mem;
  uint8_t* px; /* sample (0, 0); kPad samples of replicated border around it */
} Plane;

typedef struct {
  int x, y; /* half-sample units */
  int32_t sad; /* SAD after the integer search, SATD after refinement */
} Vector;

static int plane_alloc(Plane* p, int width, int height) {
  p->width = width;
  p->height = height;
  p->stride = width + 2 * kPad;
  p->mem = (uint8_t*)calloc((size_t)p->stride * (size_t)(height + 2 * kPad), 1);
  p->px = p->mem ? p->mem + (size_t)kPad * (size_t)p->stride + kPad : NULL;
  return p->mem != NULL;
}

static void plane_pad(Plane* p) {
  int y;
  for (y = 0; y < p->height; ++y) {
    uint8_t* r = p->px + (ptrdiff_t)y * p->stride;
    memset(r - kPad, r[0], kPad);
    memset(r + p->width, r[p->width - 1], kPad);
  }
  for (y = 1; y <= kPad; ++y) {
    memcpy(p->px - kPad - (ptrdiff_t)y * p->stride, p->px - kPad, (size_t)p->stride);
    memcpy(p->px - kPad + (ptrdiff_t)(p->height - 1 + y) * p->stride,
           p->px - kPad + (ptrdiff_t)(p->height - 1) * p->stride, (size_t)p->stride);
  }
}

/* The reference sample a half-sample vector points at, as the SADs form it. */
static int predicted(const Plane* ref, int x, int y, int mvx, int mvy) {
  const uint8_t* p = ref->px + (ptrdiff_t)(y + (mvy >> 1)) * ref->stride + x + (mvx >> 1);
  const int s = ref->stride;
  if ((mvx & 1) && (mvy & 1)) return (p[0] + p[1] + p[s] + p[s + 1] + 2) >> 2;
  if (mvx & 1) return (p[0] + p[1] + 1) >> 1;
  if (mvy & 1) return (p[0] + p[s] + 1) >> 1;
  return p[0];
}

/* The reference block a half-sample vector points at, and the selectors that
 * name its position: acc for the copies (1 horizontal, 2 vertical) and mcType
 * for motion compensation (8 horizontal, 4 vertical). */
static const uint8_t* ref_block(const Plane* ref, int bx, int by, int mvx, int mvy) {
  return ref->px + (ptrdiff_t)(by + (mvy >> 1)) * ref->stride + bx + (mvx >> 1);
}
static int32_t acc_of(int mvx, int mvy) { return (mvx & 1) | ((mvy & 1) << 1); }
static int32_t mctype_of(int mvx, int mvy) { return ((mvx & 1) << 3) | ((mvy & 1) << 2); }

/* SATD of a block against its half-sample prediction (halves rounded up). */
static int32_t satd_at(const Plane* cur, const Plane* ref, int bx, int by, int size, int mvx, int mvy) {
  uint8_t pred[16 * 16];
  const uint8_t* c = cur->px + (ptrdiff_t)by * cur->stride + bx;
  const uint8_t* r = ref_block(ref, bx, by, mvx, mvy);
  int32_t satd = 0;
  if (size == 16) {
    huxiCopy16x16HP_8u_C1R(r, ref->stride, pred, 16, acc_of(mvx, mvy), 0);
    huxiSATD16x16_8u32s_C1R(c, cur->stride, pred, 16, &satd);
  } else {
    huxiCopy8x8HP_8u_C1R(r, ref->stride, pred, 8, acc_of(mvx, mvy), 0);
    huxiSATD8x8_8u32s_C1R(c, cur->stride, pred, 8, &satd);
  }
  return satd;
}

/* Best of the eight half-sample neighbours of v (and v itself), on SATD. */
static Vector refine(const Plane* cur, const Plane* ref, int bx, int by, int size, Vector v) {
  Vector best = v;
  int dx, dy;
  best.sad = satd_at(cur, ref, bx, by, size, v.x, v.y);
  for (dy = -1; dy <= 1; ++dy)
    for (dx = -1; dx <= 1; ++dx) {
      const int32_t s = (dx || dy) ? satd_at(cur, ref, bx, by, size, v.x + dx, v.y + dy) : best.sad;
      if (s < best.sad) {
        best.x = v.x + dx;
        best.y = v.y + dy;
        best.sad = s;
      }
    }
  return best;
}

/* Integer full search of one macroblock: one candidate row per call. */
static Vector search(const Plane* cur, const Plane* ref, int bx, int by) {
  Vector best = {0, 0, 0x7fffffff};
  uint16_t sads[2 * kRange];
  int dy;
  for (dy = -kRange; dy < kRange; ++dy) {
    uint32_t idx = 0;
    const uint8_t* r = ref->px + (ptrdiff_t)(by + dy) * ref->stride + bx - kRange;
    huxiSAD16x16xNI_8u16u_C1R(cur->px + (ptrdiff_t)by * cur->stride + bx, cur->stride, r, ref->stride, sads,
                              2 * kRange, &idx);
    if (sads[idx] < best.sad) {
      best.x = 2 * ((int)idx - kRange);
      best.y = 2 * dy;
      best.sad = sads[idx];
    }
  }
  return best;
}

static double now_ms(void) {
  struct timespec t;
  clock_gettime(CLOCK_MONOTONIC, &t);
  return (double)t.tv_sec * 1e3 + (double)t.tv_nsec / 1e6;
}

/* Estimates the whole field (one vector per macroblock, one per 8x8 quarter)
 * and builds the motion-compensated prediction of the current frame; returns
 * the number of quarters whose own vector differs from their macroblock's. */
static int estimate(const Plane* cur, const Plane* ref, Vector* field, Plane* pred) {
  static const int16_t zero[8 * 8];
  const int mbw = cur->width / kMb, mbh = cur->height / kMb;
  int mx, my, q, split = 0;
  for (my = 0; my < mbh; ++my)
    for (mx = 0; mx < mbw; ++mx) {
      Vector v = refine(cur, ref, mx * kMb, my * kMb, 16, search(cur, ref, mx * kMb, my * kMb));
      field[my * mbw + mx] = v;
      for (q = 0; q < 4; ++q) {
        const int bx = mx * kMb + (q & 1) * 8, by = my * kMb + (q >> 1) * 8;
        const Vector s = refine(cur, ref, bx, by, 8, v);
        split += s.x != v.x || s.y != v.y;
        huxiMC8x8_8u_C1(ref_block(ref, bx, by, s.x, s.y), ref->stride, zero, 16,
                        pred->px + (ptrdiff_t)by * pred->stride + bx, pred->stride, mctype_of(s.x, s.y), 0);
      }
    }
  return split;
}

/* PSNR of the prediction against the current frame over the macroblocks;
 * a negative value when the two are identical. */
static double psnr(const Plane* cur, const Plane* pred) {
  const int w = cur->width / kMb * kMb, h = cur->height / kMb * kMb;
  double sse = 0.0;
  int x, y;
  for (y = 0; y < h; ++y)
    for (x = 0; x < w; ++x) {
      const int d = cur->px[(ptrdiff_t)y * cur->stride + x] - pred->px[(ptrdiff_t)y * pred->stride + x];
      sse += (double)(d * d);
    }
  return sse == 0.0 ? -1.0 : 10.0 * log10(255.0 * 255.0 * (double)w * (double)h / sse);
}

static uint32_t lcg(uint32_t* s) {
  *s = *s * 1664525u + 1013904223u;
  return *s >> 8;
}

/* A smooth random texture (box-filtered noise), so that neighbouring
 * positions score close to each other and the search has a single best. */
static void make_reference(Plane* ref, uint32_t seed) {
  const int w = ref->width, h = ref->height;
  int* noise = (int*)malloc(sizeof(int) * (size_t)(w + 4) * (size_t)(h + 4));
  int x, y, i, j;
  for (i = 0; i < (w + 4) * (h + 4); ++i) noise[i] = (int)(lcg(&seed) & 255);
  for (y = 0; y < h; ++y)
    for (x = 0; x < w; ++x) {
      int s = 0;
      for (j = 0; j < 3; ++j)
        for (i = 0; i < 3; ++i) s += noise[(y + j) * (w + 4) + x + i];
      ref->px[(ptrdiff_t)y * ref->stride + x] = (uint8_t)(s / 9);
    }
  free(noise);
  plane_pad(ref);
}

/* Current frame: every macroblock copies the reference at its own vector, a
 * quarter of them at half-sample positions. */
static void make_current(Plane* cur, const Plane* ref, Vector* truth, uint32_t seed) {
  const int mbw = cur->width / kMb, mbh = cur->height / kMb;
  int mx, my, x, y;
  for (my = 0; my < mbh; ++my)
    for (mx = 0; mx < mbw; ++mx) {
      Vector v;
      v.x = 2 * ((int)(lcg(&seed) % (2 * kRange - 2)) - kRange + 1);
      v.y = 2 * ((int)(lcg(&seed) % (2 * kRange - 2)) - kRange + 1);
      if (lcg(&seed) % 4 == 0) v.x += (lcg(&seed) & 1) ? 1 : -1;
      if (lcg(&seed) % 4 == 0) v.y += (lcg(&seed) & 1) ? 1 : -1;
      v.sad = 0;
      truth[my * mbw + mx] = v;
      for (y = 0; y < kMb; ++y)
        for (x = 0; x < kMb; ++x)
          cur->px[(ptrdiff_t)(my * kMb + y) * cur->stride + mx * kMb + x] =
              (uint8_t)predicted(ref, mx * kMb + x, my * kMb + y, v.x, v.y);
    }
  plane_pad(cur);
}

static int read_frame(const char* path, Plane* p) {
  FILE* f = fopen(path, "rb");
  int y, ok = 1;
  if (!f) return 0;
  for (y = 0; y < p->height && ok; ++y)
    ok = fread(p->px + (ptrdiff_t)y * p->stride, 1, (size_t)p->width, f) == (size_t)p->width;
  fclose(f);
  if (ok) plane_pad(p);
  return ok;
}

static void print_field(const Vector* field, int mbw, int mbh) {
  int mx, my;
  printf("vectors in half samples (x,y), one row of macroblocks per line:\n");
  for (my = 0; my < mbh; ++my) {
    for (mx = 0; mx < mbw; ++mx) printf("%4d,%-3d", field[my * mbw + mx].x, field[my * mbw + mx].y);
    printf("\n");
  }
}

int main(int argc, char** argv) {
  const HuxLibraryVersion* ver = huxvcGetLibVersion();
  const int synthetic = argc < 5;
  const int width = synthetic ? 352 : atoi(argv[3]);
  const int height = synthetic ? 288 : atoi(argv[4]);
  Plane cur, ref, pred;
  double quality;
  Vector *field, *truth;
  int mbw, mbh, i, matched = 0, split = 0, runs;
  double t0, ms;

  if (argc != 1 && argc != 5) {
    fprintf(stderr, "usage: %s [cur.y ref.y width height]\n", argv[0]);
    return 2;
  }
  if (width < kMb || height < kMb || width > 16384 || height > 16384) {
    fprintf(stderr, "frame size must be 16x16 to 16384x16384\n");
    return 2;
  }
  mbw = width / kMb;
  mbh = height / kMb;
  if (!plane_alloc(&cur, width, height) || !plane_alloc(&ref, width, height) || !plane_alloc(&pred, width, height))
    return 1;
  field = (Vector*)calloc((size_t)(mbw * mbh), sizeof(Vector));
  truth = (Vector*)calloc((size_t)(mbw * mbh), sizeof(Vector));
  if (!field || !truth) return 1;

  printf("huxvc %s (%.4s), motion search +-%d samples, %dx%d\n", ver->Version, ver->targetCpu, kRange, width, height);
  if (synthetic) {
    make_reference(&ref, 2024u);
    make_current(&cur, &ref, truth, 7u);
  } else if (!read_frame(argv[1], &cur) || !read_frame(argv[2], &ref)) {
    fprintf(stderr, "cannot read %dx%d frames from %s and %s\n", width, height, argv[1], argv[2]);
    return 1;
  }

  split = estimate(&cur, &ref, field, &pred);
  quality = psnr(&cur, &pred);
  runs = 0;
  t0 = now_ms();
  do {
    estimate(&cur, &ref, field, &pred);
    ++runs;
  } while (now_ms() - t0 < 200.0);
  ms = (now_ms() - t0) / runs;

  print_field(field, mbw, mbh);
  printf("8x8 quarters preferring another half-sample vector: %d of %d\n", split, 4 * mbw * mbh);
  if (quality < 0.0)
    printf("prediction PSNR: identical to the current frame\n");
  else
    printf("prediction PSNR: %.2f dB\n", quality);
  if (synthetic) {
    for (i = 0; i < mbw * mbh; ++i) matched += field[i].x == truth[i].x && field[i].y == truth[i].y;
    printf("recovered %d of %d macroblock vectors exactly\n", matched, mbw * mbh);
  }
  printf("time per frame: %.3f ms, search and prediction (%d macroblocks, %d runs)\n", ms, mbw * mbh, runs);
  free(cur.mem);
  free(ref.mem);
  free(pred.mem);
  free(field);
  free(truth);
  return synthetic && matched != mbw * mbh ? 1 : 0;
}
