/* Uses the public header as a C99 caller does: statuses, the version record, a
 * block metric. Also compiled as C++ to keep the header clean in both. */
#include <stdio.h>
#include <string.h>

#include "huxvc.h"

int main(void) {
  const HuxLibraryVersion* v = huxvcGetLibVersion();
  uint8_t cur[16 * 16], ref[16 * 16];
  int32_t sad = -1;
  HuxResult st;
  HuxSize size = {16, 16};
  int i;
  if (v == NULL || v != huxvcGetLibVersion() || v->major != 6 || v->minor != 0 || v->majorBuild != 167 ||
      v->build != 638 || memcmp(v->targetCpu, "w7\0\0", 4) != 0 || strcmp(v->Name, "huxvcw7-6.0.dll") != 0 ||
      strcmp(v->Version, "6.0 Update 1 build 167.32") != 0 || strcmp(v->BuildDate, "Nov 25 2008") != 0) {
    printf("bad version record\n");
    return 1;
  }
#if HUXVC_VERSION != HUXVC_VERSION_MAJOR * 1000000 + HUXVC_VERSION_MINOR * 1000 + HUXVC_VERSION_PATCH || \
    HUXVC_VERSION < 6000167
#error "HUXVC_VERSION is not the comparable form of the version macros"
#endif
  if (v->major != HUXVC_VERSION_MAJOR || v->minor != HUXVC_VERSION_MINOR || v->majorBuild != HUXVC_VERSION_PATCH) {
    printf("version record %d.%d.%d, header %d.%d.%d\n", (int)v->major, (int)v->minor, (int)v->majorBuild,
           HUXVC_VERSION_MAJOR, HUXVC_VERSION_MINOR, HUXVC_VERSION_PATCH);
    return 1;
  }
  for (i = 0; i < 16 * 16; ++i) {
    cur[i] = (uint8_t)(i % 200);
    ref[i] = (uint8_t)(i % 200 + 3);
  }
  st = huxiSAD16x16_8u32s(cur, 16, ref, 16, &sad, 0);
  if (st != huxOk || sad != 3 * 256) {
    printf("SAD: status %d, value %d\n", (int)st, (int)sad);
    return 1;
  }
  if (huxiSAD16x16_8u32s(NULL, 16, ref, 16, &sad, 0) != huxErrNullPtr) return 1;
  printf("huxvc %s (%dx%d)\n", v->Version, (int)size.width, (int)size.height);
  return 0;
}
