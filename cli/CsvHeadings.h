// Which column of a CSV table is meant.
#pragma once

#include <QStringList>
#include <optional>

#include "cli/CsvTable.h"
#include "platform/error/Error.h"

namespace CsvHeadings {

// By the separator that was tried there is no such column, or it is empty.
class NoSuchColumn : public InputError {
 public:
  using InputError::InputError;
};

struct Place {
  std::size_t index = 0;
  bool isNamed = false;  // by its heading, so that the first line is one
};

QStringList FirstTexts(const CsvTable& table);

// The column of that number, from 1, or that heading. `heading` says whether there is one, where that is
// known; `name` stands for the file in the InputError for none or several.
Place Find(const CsvTable& table, const QString& column, std::optional<bool> heading, const QString& name);

}  // namespace CsvHeadings
