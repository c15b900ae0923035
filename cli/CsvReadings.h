// One column of a CSV table, read in every way that it allows.
#pragma once

#include <QString>
#include <vector>

#include "cli/CsvColumn.h"
#include "cli/CsvTable.h"

namespace CsvReadings {

struct Number {
  int line = 0;
  QString text;
  QString value;
  bool hasUnit = false;  // behind it, left out of the text
};

// The column under one separator and one decimal mark.
struct Outcome {
  QChar separator;
  WrittenNumbers::Decimal mark = WrittenNumbers::Decimal::Point;
  bool hasBareComma = false;  // a comma outside of quotes was taken for a part of a number
  std::vector<Number> numbers;
};

// The option that says so; of a single column, one that no comma or blank divides.
QString SeparatorOption(QChar separator);

bool SameValues(const Outcome& a, const Outcome& b);

// One outcome, or two where the decimal mark is open. An InputError names the first fault where there is
// none; `name` stands for the file.
std::vector<Outcome> Of(const CsvTable& table, const QString& name, const CsvOptions& options);

}  // namespace CsvReadings
