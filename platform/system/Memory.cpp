#include "platform/system/Memory.h"

#include <cstdlib>

#ifdef __GLIBC__
#include <malloc.h>
#endif

void TakeMemoryInLargeSteps() {
#ifdef __GLIBC__
  mallopt(M_TOP_PAD, 16 << 20);
#endif
}
