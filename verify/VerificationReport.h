// The outcome of the program's check of itself, for reading, for programs and for the file of records.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include "verify/Verification.h"

struct VerificationReport {
  std::vector<Verification::Check> checks;
  QString version;
  QDateTime date;

  QString Text() const;
  QByteArray Json() const;
  QByteArray Pdf() const;  // A4; needs a QGuiApplication

 private:
  QString Summary() const;
  QString Html() const;
};
