// The program's check of itself: what is compared, and how well each comparison comes out.
#pragma once

#include <QString>
#include <vector>

namespace Verification {

constexpr int mostDigits = 15;

// One figure or text beside the one expected.
struct Quantity {
  QString name;
  QString expected;
  QString actual;
  double digits = 0;  // that agree, 0 to mostDigits

  static Quantity OfNumbers(const QString& name, const QString& expected, double actual);
  static Quantity OfNumbers(const QString& name, double expected, double actual);
  static Quantity OfTexts(const QString& name, const QString& expected,
                          const QString& actual);  // all or none
};

// Quantities that belong together: one line of the report.
struct Check {
  QString group;
  QString name;
  QString source;
  int requiredDigits = mostDigits;
  std::vector<Quantity> quantities = {};

  double Digits() const;  // of the quantity that agrees least; 0 where there is none
  bool Passed() const { return Digits() >= requiredDigits; }
};

bool AllPassed(const std::vector<Check>& checks);

// The significant digits in which two numbers agree: mostDigits where both are the same when written with so
// many, else the negative logarithm of the relative error (of the absolute one, where 0 is expected).
double AgreedDigits(double expected, double actual);

std::vector<Check> CertifiedSets();   // NIST's nine
std::vector<Check> Constants();       // d2 and d3 against the integrated range distribution
std::vector<Check> ReferenceCases();  // data sets with their limits, capability, rules, histogram and texts

// A library made in a temporary folder, filled, closed and read again; or, where an address is given, in a
// schema of its own in that database, which leaves nothing there. Error where none can be made.
Check SaveAndLoad(const QString& address = {});

}  // namespace Verification
