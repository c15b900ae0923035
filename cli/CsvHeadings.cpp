#include "cli/CsvHeadings.h"

#include <algorithm>

#include "cli/CsvTexts.h"
#include "texts/CsvWords.h"

using namespace Qt::StringLiterals;

QStringList CsvHeadings::FirstTexts(const CsvTable& table) {
  QStringList texts;
  for (const CsvField& field : table.rows.front().fields) texts << field.text;
  return texts;
}

CsvHeadings::Place CsvHeadings::Find(const CsvTable& table, const QString& column,
                                     std::optional<bool> heading, const QString& name) {
  const QStringList headings = FirstTexts(table);
  bool isPlace = false;
  const int place = column.toInt(&isPlace);
  if (isPlace && place >= 1 && place <= headings.size()) return {static_cast<std::size_t>(place - 1), false};
  for (const Qt::CaseSensitivity sensitivity : {Qt::CaseSensitive, Qt::CaseInsensitive}) {
    if (heading == false) break;
    const auto isIt = [&](const QString& text) { return text.compare(column.trimmed(), sensitivity) == 0; };
    const auto count = std::ranges::count_if(headings, isIt);
    if (count > 1) throw InputError(Words::Csv::oneHeadingTwice(name, count, column));
    if (count == 1)
      return {static_cast<std::size_t>(std::ranges::find_if(headings, isIt) - headings.begin()), true};
  }
  throw NoSuchColumn(Words::Csv::noSuchColumn(name, column, CsvTexts::Shown(headings.join(u", "_s))));
}
