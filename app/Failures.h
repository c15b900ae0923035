// The two ways in which a command fails; each is one line that names what is at fault.
#pragma once

#include "core/Trap.h"

// Wrong usage or bad input: exit status 2.
class UsageError : public Error {
 public:
  using Error::Error;
};

// A file that cannot be read or written: exit status 3.
class FileError : public Error {
 public:
  using Error::Error;
};
