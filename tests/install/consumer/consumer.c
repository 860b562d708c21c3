#include <stdio.h>

#include "huxvc.h"

int main(void) {
  const HuxLibraryVersion* v = huxvcGetLibVersion();
  uint8_t a[64] = {0}, b[64] = {0};
  int32_t sad = -1;
  b[9] = 5;
  if (huxiSAD8x8_8u32s_C1R(a, 8, b, 8, &sad, 0) != huxOk || sad != 5) return 1;
  printf("consumer linked huxvc %d.%d\n", (int)v->major, (int)v->minor);
  return 0;
}
