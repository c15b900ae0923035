// How the program asks the operating system for memory.
#pragma once

#include <cstdlib>

#ifdef __GLIBC__
#include <malloc.h>
#endif

// Takes memory in steps of 16 MB and so gives back little of what is freed: a library is read again after
// every change of database, and would else ask for the same pages anew. For the start of a program.
inline void TakeMemoryInLargeSteps() {
#ifdef __GLIBC__
  mallopt(M_TOP_PAD, 16 << 20);
#endif
}
