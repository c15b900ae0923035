#include "data/RawDataReadings.h"

#include <algorithm>
#include <map>

#include "data/RawDataLines.h"
#include "data/RawDataText.h"
#include "platform/language/Conversions.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;
using Conversions::IsNumeric;
using RawDataLines::Readings;
using RawDataLines::ReadingsOf;

namespace RawDataReadings {

namespace {

using Row = QStringList;

struct Grid {
  QList<Row> rows;
  qsizetype columns = 0;
};

QStringList LinesOf(const QString& text) {
  QStringList lines;
  RawDataLines::ForEachLine(text, [&](qsizetype, QStringView line) { lines << line.toString(); });
  return lines;
}

template <class EndsCell>
Row CellsOf(const QString& line, EndsCell endsCell) {
  Row cells;
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
Grid GridOf(const QStringList& lines, EndsCell endsCell) {
  Grid grid;
  for (const QString& line : lines) {
    grid.rows << CellsOf(line, endsCell);
    grid.columns = std::max(grid.columns, grid.rows.back().size());
  }
  return grid;
}

bool IsNumber(const QString& cell) { return IsNumeric(cell) || ReadingsOf(cell).Any(); }

bool HasDigit(const QString& text) {
  return std::ranges::any_of(text, [](QChar character) { return character.isDigit(); });
}

QStringList Column(const Grid& grid, qsizetype column) {
  QStringList cells;
  for (const Row& row : grid.rows) cells << row.value(column);
  return cells;
}

// 1, 2, 3 ... beside the values: the rows' numbers.
bool CountsRows(const QStringList& cells) {
  if (cells.size() < 3) return false;
  bool isNumber = false;
  const int first = cells[0].toInt(&isNumber);
  for (qsizetype i = 0; i < cells.size(); ++i)
    if (cells[i] != QString::number(first + i)) return false;
  return isNumber;
}

// Every cell is a value.
bool HoldsValuesOnly(const Grid& grid) {
  for (const Row& row : grid.rows)
    if (row.size() != grid.columns || !std::ranges::all_of(row, IsNumber)) return false;
  return !CountsRows(Column(grid, 0));
}

// Commas that are decimal commas without doubt: no value speaks of another notation, and one of them has no
// other reading. What has no digit, such as a column's heading, has no say in it.
bool CommasAreDecimal(const QStringList& values) {
  bool isCertain = false;
  for (const QString& value : values) {
    if (IsNumeric(value)) {
      if (value.contains(u'.')) return false;
      continue;
    }
    if (!HasDigit(value)) continue;
    if (value.count(u',') != 1 || value.contains(u'.') || !IsNumeric(QString(value).replace(u',', u'.')))
      return false;
    isCertain |= ReadingsOf(value).point.isEmpty();
  }
  return isCertain;
}

QStringList WithoutTrailingComma(QStringList values) {
  for (QString& value : values)
    if (value.endsWith(u',') && IsNumeric(QStringView(value).chopped(1))) value.chop(1);
  return values;
}

Pasted FromValues(const QStringList& cells) {
  Pasted pasted;
  QStringList values = WithoutTrailingComma(cells);
  if (CommasAreDecimal(values)) {
    for (QString& value : values) {
      if (IsNumeric(value) || !HasDigit(value)) continue;
      value.replace(u',', u'.');
      ++pasted.decimalCommas;
    }
  }
  pasted.text = values.join(u'\n');
  return pasted;
}

Pasted FromOneLine(QString line) {
  if (line.endsWith(u',')) line.chop(1);
  const QStringList values = RawDataLines::NumbersBetweenCommas(line);
  return {values.isEmpty() || ReadingsOf(line).Any() ? line : values.join(u'\n'), 0};
}

Pasted FromLines(const QStringList& lines) {
  const Grid grid = GridOf(lines, RawDataLines::EndsCell);
  if (grid.columns < 2 && grid.rows.size() == 1) return FromOneLine(grid.rows[0][0]);
  if (grid.columns > 1 && !HoldsValuesOnly(grid)) return {lines.join(u'\n'), 0};
  QStringList values;
  for (const Row& row : grid.rows) values << row;
  return FromValues(values);
}

// What a line becomes in each reading; empty where that reading does not concern it.
using Transformed = std::map<Offer::Kind, QStringList>;

Transformed Transform(const QString& line) {
  if (IsNumeric(line)) return {};
  Transformed result;
  const Readings readings = ReadingsOf(line);
  const auto add = [&](Offer::Kind kind, const QStringList& values) {
    if (!values.isEmpty() && !values[0].isEmpty()) result[kind] = values;
  };
  if (line.contains(u',')) {
    add(Offer::DecimalCommas, {readings.comma});
    add(Offer::Thousands, {readings.point});
    if (!RawDataLines::HasThousandsSeparators(line))
      add(Offer::SeparateAtCommas, RawDataLines::NumbersBetweenCommas(line));
  } else {
    add(Offer::PlainNumbers, {readings.point.isEmpty() ? readings.comma : readings.point});
  }
  add(Offer::SeparateAtBlanks, RawDataLines::NumbersBetweenBlanks(line));
  if (result.empty()) result[Offer::LeaveOutNoNumbers] = {};
  return result;
}

// A point that only thousands explain makes the points of the other lines doubtful too.
bool PointsAreThousands(const QStringList& lines) {
  return std::ranges::any_of(lines, [](const QString& line) {
    if (!line.contains(u',') || !line.contains(u'.')) return false;
    const Readings readings = ReadingsOf(line);
    return readings.point.isEmpty() && !readings.comma.isEmpty();
  });
}

QStringList InReading(Offer::Kind kind, const QString& line, bool pointsAreThousands) {
  const Transformed transformed = Transform(line);
  if (const auto found = transformed.find(kind); found != transformed.end()) return found->second;
  if (kind == Offer::DecimalCommas && pointsAreThousands && line.contains(u'.')) {
    if (const QString value = ReadingsOf(line).comma; !value.isEmpty()) return {value};
  }
  // Who says what the commas are means the units and signs as well.
  const auto plain = transformed.find(Offer::PlainNumbers);
  const bool alsoPlain = kind == Offer::DecimalCommas || kind == Offer::Thousands;
  return alsoPlain && plain != transformed.end() ? plain->second : QStringList{line};
}

QString CaptionOf(Offer::Kind kind, qsizetype count) {
  namespace W = Words::RawData;
  switch (kind) {
    case Offer::DecimalCommas:
      return count == 1 ? W::readDecimalComma() : W::readDecimalCommas(count);
    case Offer::Thousands:
      return count == 1 ? W::readThousand() : W::readThousands(count);
    case Offer::PlainNumbers:
      return count == 1 ? W::readPlainNumber() : W::readPlainNumbers(count);
    case Offer::SeparateAtCommas:
      return count == 1 ? W::separateAtComma() : W::separateAtCommas(count);
    case Offer::SeparateAtBlanks:
      return count == 1 ? W::separateAtBlank() : W::separateAtBlanks(count);
    case Offer::LeaveOutNoNumbers:
      return count == 1 ? W::leaveOutLine() : W::leaveOutLines(count);
    default:
      return {};
  }
}

QList<Offer> LineOffers(const QStringList& lines) {
  std::map<Offer::Kind, qsizetype> counts;
  QString unit;
  for (const QString& line : lines) {
    const Transformed transformed = Transform(line);
    for (const auto& [kind, values] : transformed) ++counts[kind];
    if (unit.isEmpty() && !transformed.empty() && !transformed.contains(Offer::LeaveOutNoNumbers))
      unit = ReadingsOf(line).unit;
  }
  // Nothing would be left.
  if (counts[Offer::LeaveOutNoNumbers] == lines.size()) return {};
  QList<Offer> offers;
  for (const auto& [kind, count] : counts) {
    if (count == 0) continue;
    QString caption = CaptionOf(kind, count);
    const bool leavesUnitOut =
        kind == Offer::DecimalCommas || kind == Offer::Thousands || kind == Offer::PlainNumbers;
    if (leavesUnitOut && !unit.isEmpty())
      caption = Words::RawData::withoutUnit(caption, RawDataText::Quoted(unit));
    offers << Offer{kind, 0, caption};
  }
  return offers;
}

// Cells that commas separate: as many on every line, and not all of them decimal commas.
bool IsCommaGrid(const QStringList& lines) {
  if (lines.size() < 2) return false;
  const qsizetype commas = lines[0].count(u',');
  if (commas == 0) return false;
  bool isOther = false;
  for (const QString& line : lines) {
    if (line.count(u',') != commas) return false;
    isOther |= !ReadingsOf(line).Any();
  }
  return isOther;
}

std::optional<Grid> GridIn(const QStringList& lines) {
  const auto hasCells = [](const QString& line) { return std::ranges::any_of(line, RawDataLines::EndsCell); };
  if (std::ranges::any_of(lines, hasCells)) return GridOf(lines, RawDataLines::EndsCell);
  if (IsCommaGrid(lines)) return GridOf(lines, [](QChar character) { return character == u','; });
  return std::nullopt;
}

QString WithLeftOut(const QString& caption, qsizetype cells) {
  if (cells == 0) return caption;
  return cells == 1 ? Words::RawData::leaveOutCell(caption) : Words::RawData::leaveOutCells(caption, cells);
}

QList<Offer> GridOffers(const Grid& grid) {
  constexpr qsizetype mostColumns = 3;
  struct Candidate {
    qsizetype column, numbers;
  };
  QList<Candidate> candidates;
  qsizetype all = 0;
  for (qsizetype i = 0; i < grid.columns; ++i) {
    const qsizetype numbers = std::ranges::count_if(Column(grid, i), IsNumber);
    all += numbers;
    if (numbers > 0) candidates << Candidate{i, numbers};
  }
  // The rows' numbers come last, then what is no column of values.
  const auto isBetter = [&](const Candidate& a, const Candidate& b) {
    const bool aCounts = CountsRows(Column(grid, a.column)), bCounts = CountsRows(Column(grid, b.column));
    return aCounts == bCounts ? a.numbers > b.numbers : bCounts;
  };
  std::ranges::stable_sort(candidates, isBetter);
  QList<Offer> offers;
  for (const Candidate& candidate : candidates.mid(0, mostColumns)) {
    const qsizetype number = candidate.column + 1;
    const QString heading = grid.rows[0].value(candidate.column);
    QString caption =
        heading.isEmpty() || IsNumber(heading)
            ? Words::RawData::takeColumn(number, candidate.numbers)
            : Words::RawData::takeNamedColumn(number, RawDataText::Quoted(heading), candidate.numbers);
    caption = WithLeftOut(caption, grid.rows.size() - candidate.numbers);
    offers << Offer{Offer::Column, static_cast<int>(candidate.column), caption};
  }
  qsizetype cells = 0;
  for (const Row& row : grid.rows) cells += row.size();
  if (candidates.size() > 1)
    offers << Offer{Offer::AllCells, 0, WithLeftOut(Words::RawData::takeAllCells(all), cells - all)};
  return offers;
}

QString FromCells(const QStringList& cells) {
  QStringList values;
  std::ranges::copy_if(cells, std::back_inserter(values), IsNumber);
  return FromValues(values).text;
}

// Both one value and several.
bool IsDoubtful(const QString& line) {
  return line.contains(u',') && !RawDataLines::HasThousandsSeparators(line) &&
         !RawDataLines::NumbersBetweenCommas(line).isEmpty() && ReadingsOf(line).Any();
}

QString OneValue(const QString& line) {
  const Readings readings = ReadingsOf(line);
  return readings.comma.isEmpty() ? readings.point : readings.comma;
}

}  // namespace

Pasted FromPasted(const QString& pasted) {
  const QStringList lines = LinesOf(pasted);
  if (lines.isEmpty()) return {};
  Pasted result = FromLines(lines);
  const QChar last = pasted.back();
  const bool isEnded = RawDataLines::IsLineEnd(last) || RawDataLines::EndsCell(last);
  if (isEnded && !result.text.isEmpty()) result.text += u'\n';
  return result;
}

QList<Offer> Offers(const QString& text) {
  const QStringList lines = LinesOf(text);
  if (const std::optional<Grid> grid = GridIn(lines)) return GridOffers(*grid);
  return LineOffers(lines);
}

QString Apply(const Offer& offer, const QString& text) {
  const QStringList lines = LinesOf(text);
  QStringList values;
  if (offer.kind == Offer::Column || offer.kind == Offer::AllCells) {
    const std::optional<Grid> grid = GridIn(lines);
    if (!grid) return text;
    if (offer.kind == Offer::Column) return FromCells(Column(*grid, offer.column));
    for (const Row& row : grid->rows) values << row;
    return FromCells(values);
  }
  const bool pointsAreThousands = PointsAreThousands(lines);
  for (const QString& line : lines) values << InReading(offer.kind, line, pointsAreThousands);
  return values.join(u'\n');
}

std::optional<Doubt> DoubtfulComma(const QString& text) {
  std::optional<Doubt> doubt;
  RawDataLines::ForEachLine(text, [&](qsizetype number, QStringView view) {
    const QString line = view.toString();
    if (!IsDoubtful(line)) return;
    if (doubt)
      ++doubt->more;
    else
      doubt = Doubt{line, number, OneValue(line), RawDataLines::NumbersBetweenCommas(line), 0};
  });
  return doubt;
}

QString Settled(const QString& text, bool asOneValue) {
  QStringList values;
  for (const QString& line : LinesOf(text)) {
    if (!IsDoubtful(line))
      values << line;
    else if (asOneValue)
      values << OneValue(line);
    else
      values << RawDataLines::NumbersBetweenCommas(line);
  }
  return values.join(u'\n');
}

}  // namespace RawDataReadings
