// What a fuzz target holds for certain.
#pragma once

#include <cstdlib>

inline void Require(bool holds) {
  if (!holds) std::abort();
}
