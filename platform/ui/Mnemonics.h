// Gives the captions of one window their mnemonics, so that no two of them share a letter.
#pragma once

#include <QString>

class Mnemonics {
 public:
  // reserved: letters that the window uses elsewhere.
  explicit Mnemonics(const QString& reserved = {}) : taken_(reserved.toUpper()) {}

  // The caption with "&" before its first letter that is still free, the first letters of words tried first.
  // A caption that brings its own mnemonic keeps it; one without a free letter stays as it is.
  QString Mark(const QString& caption);

 private:
  QString taken_;
};
