#include "data/RawDataGrid.h"

#include <algorithm>

#include "data/RawDataLines.h"
#include "platform/language/Conversions.h"

namespace {

template <class EndsCell>
QStringList CellsOf(const QString& line, EndsCell endsCell) {
  QStringList cells;
  for (auto start = line.cbegin();;) {
    const auto end = std::find_if(start, line.cend(), endsCell);
    cells << QStringView(start, end).trimmed().toString();
    if (end == line.cend()) break;
    start = end + 1;
  }
  // A separator behind the last value ends it as a line end does.
  if (cells.size() == 2 && cells.back().isEmpty()) cells.removeLast();
  return cells;
}

template <class EndsCell>
RawDataGrid GridOf(const QStringList& lines, EndsCell endsCell) {
  RawDataGrid grid;
  for (const QString& line : lines) {
    grid.rows << CellsOf(line, endsCell);
    grid.columns = std::max(grid.columns, grid.rows.back().size());
  }
  return grid;
}

}  // namespace

RawDataGrid RawDataGrid::Of(const QStringList& lines) { return GridOf(lines, RawDataLines::EndsCell); }

std::optional<RawDataGrid> RawDataGrid::In(const QStringList& lines) {
  const auto hasCells = [](const QString& line) { return std::ranges::any_of(line, RawDataLines::EndsCell); };
  if (std::ranges::any_of(lines, hasCells)) return Of(lines);
  if (HasCommasBetweenCells(lines)) return GridOf(lines, [](QChar character) { return character == u','; });
  return std::nullopt;
}

bool RawDataGrid::HasCommasBetweenCells(const QStringList& lines) {
  if (lines.size() < 2) return false;
  const qsizetype commas = lines[0].count(u',');
  if (commas == 0) return false;
  bool isOther = false;
  for (const QString& line : lines) {
    if (line.count(u',') != commas) return false;
    isOther |= !RawDataLines::ReadingsOf(line).Any();
  }
  return isOther;
}

bool RawDataGrid::IsNumber(const QString& cell) {
  return Conversions::IsNumeric(cell) || RawDataLines::ReadingsOf(cell).Any();
}

QStringList RawDataGrid::Column(qsizetype column) const {
  QStringList cells;
  for (const QStringList& row : rows) cells << row.value(column);
  return cells;
}

bool RawDataGrid::CountsRows(qsizetype column) const {
  QStringList cells = Column(column);
  if (!cells.isEmpty() && !IsNumber(cells.first())) cells.removeFirst();  // the heading
  if (cells.size() < 3) return false;
  bool isNumber = false;
  const int first = cells[0].toInt(&isNumber);
  for (qsizetype i = 0; i < cells.size(); ++i)
    if (cells[i] != QString::number(first + i)) return false;
  return isNumber;
}

bool RawDataGrid::HoldsValuesOnly() const {
  for (const QStringList& row : rows)
    if (row.size() != columns || !std::ranges::all_of(row, IsNumber)) return false;
  return !CountsRows(0);
}
