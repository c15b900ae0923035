#include "data/RawDataReadings.h"

#include <algorithm>
#include <map>

#include "data/RawDataGrid.h"
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

QStringList LinesOf(const QString& text) {
  QStringList lines;
  RawDataLines::ForEachLine(text, [&](qsizetype, QStringView line) { lines << line.toString(); });
  return lines;
}

bool HasDigit(const QString& text) {
  return std::ranges::any_of(text, [](QChar character) { return character.isDigit(); });
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
  const RawDataGrid grid = RawDataGrid::Of(lines);
  if (grid.columns < 2 && grid.rows.size() == 1) return FromOneLine(grid.rows[0][0]);
  const bool isRow = grid.rows.size() == 1 && grid.HoldsValuesOnly();
  const bool isGrid = grid.columns > 1 ? !isRow : RawDataGrid::HasCommasBetweenCells(lines);
  if (isGrid) return {lines.join(u'\n'), 0};
  QStringList values;
  for (const QStringList& row : grid.rows) values << row;
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

// What the points of lines without a comma may be where the commas are decimal.
struct Points {
  qsizetype doubtful = 0;  // lines on which they may set thousands apart
  bool mayBeDecimal = true, mayBeThousands = true;
};

Points PointsIn(const QStringList& lines) {
  Points points;
  for (const QString& line : lines) {
    if (!line.contains(u'.')) continue;
    const Readings readings = ReadingsOf(line);
    if (!readings.Any()) continue;
    const bool hasThousands = !readings.comma.isEmpty();
    points.mayBeThousands &= hasThousands;
    // A point that only thousands explain speaks for those of the other lines.
    if (line.contains(u','))
      points.mayBeDecimal &= !hasThousands;
    else
      ++points.doubtful;
  }
  return points;
}

QStringList InReading(Offer::Kind kind, const QString& line) {
  const Transformed transformed = Transform(line);
  if (const auto found = transformed.find(kind); found != transformed.end()) return found->second;
  if (kind == Offer::CommasAndPoints) {
    if (const QString value = ReadingsOf(line).comma; !value.isEmpty() && line.contains(u'.')) return {value};
    return InReading(Offer::DecimalCommas, line);
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
    case Offer::CommasAndPoints:
      return W::readCommasAndPoints(count);
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

bool LeavesUnitOut(Offer::Kind kind) {
  return kind == Offer::DecimalCommas || kind == Offer::CommasAndPoints || kind == Offer::Thousands ||
         kind == Offer::PlainNumbers;
}

// The units of the lines that are numbers with one.
QStringList UnitsIn(const QStringList& lines) {
  QStringList units;
  for (const QString& line : lines)
    if (const QString unit = ReadingsOf(line).unit; !unit.isEmpty() && !units.contains(unit)) units << unit;
  return units;
}

// Of the lines with that unit; of all where it is null. A caption names the unit that is left out.
QList<Offer> LineOffers(const QStringList& lines, const QString& unit, const QString& named) {
  std::map<Offer::Kind, qsizetype> counts;
  qsizetype rest = lines.size();  // nothing would be left without them
  for (const QString& line : lines) {
    if (!unit.isNull() && ReadingsOf(line).unit != unit) continue;
    const Transformed transformed = Transform(line);
    for (const auto& [kind, values] : transformed) ++counts[kind];
    if (transformed.contains(Offer::LeaveOutNoNumbers)) --rest;
  }
  if (rest == 0) return {};
  const Points points = PointsIn(lines);
  if (counts[Offer::DecimalCommas] > 0 && points.doubtful > 0 && points.mayBeThousands) {
    counts[Offer::CommasAndPoints] = counts[Offer::DecimalCommas] + points.doubtful;
    if (!points.mayBeDecimal) counts[Offer::DecimalCommas] = 0;
  }
  QList<Offer> offers;
  for (const auto& [kind, count] : counts) {
    if (count == 0) continue;
    QString caption = CaptionOf(kind, count);
    if (LeavesUnitOut(kind) && !named.isEmpty())
      caption = Words::RawData::withoutUnit(caption, RawDataText::Quoted(named));
    offers << Offer{kind, 0, caption, unit};
  }
  return offers;
}

QList<Offer> LineOffers(const QStringList& lines) {
  const QStringList units = UnitsIn(lines);
  if (units.size() < 2) return LineOffers(lines, {}, units.value(0));
  QList<Offer> offers;
  for (const QString& unit : units) offers << LineOffers(lines, unit, unit);
  return offers << LineOffers(lines, u""_s, {});
}

QString WithLeftOut(const QString& caption, qsizetype cells) {
  if (cells == 0) return caption;
  return cells == 1 ? Words::RawData::leaveOutCell(caption) : Words::RawData::leaveOutCells(caption, cells);
}

QList<Offer> GridOffers(const RawDataGrid& grid) {
  struct Candidate {
    qsizetype column, numbers;
  };
  QList<Candidate> candidates;
  qsizetype all = 0;
  for (qsizetype i = 0; i < grid.columns; ++i) {
    const qsizetype numbers = std::ranges::count_if(grid.Column(i), RawDataGrid::IsNumber);
    all += numbers;
    if (numbers > 0) candidates << Candidate{i, numbers};
  }
  // The rows' numbers come last, then what is no column of values.
  const auto isBetter = [&](const Candidate& a, const Candidate& b) {
    const bool aCounts = grid.CountsRows(a.column), bCounts = grid.CountsRows(b.column);
    return aCounts == bCounts ? a.numbers > b.numbers : bCounts;
  };
  std::ranges::stable_sort(candidates, isBetter);
  QList<Offer> offers;
  for (const Candidate& candidate : candidates) {
    const qsizetype number = candidate.column + 1;
    const QString heading = grid.rows[0].value(candidate.column);
    QString caption =
        heading.isEmpty() || RawDataGrid::IsNumber(heading)
            ? Words::RawData::takeColumn(number, candidate.numbers)
            : Words::RawData::takeNamedColumn(number, RawDataText::Quoted(heading), candidate.numbers);
    caption = WithLeftOut(caption, grid.rows.size() - candidate.numbers);
    offers << Offer{Offer::Column, static_cast<int>(candidate.column), caption};
  }
  qsizetype cells = 0;
  for (const QStringList& row : grid.rows) cells += row.size();
  if (candidates.size() > 1) {
    const Offer allCells{Offer::AllCells, 0, WithLeftOut(Words::RawData::takeAllCells(all), cells - all)};
    offers.insert(grid.HoldsValuesOnly() ? 0 : offers.size(), allCells);
  }
  return offers;
}

QString FromCells(const QStringList& cells) {
  QStringList values;
  std::ranges::copy_if(cells, std::back_inserter(values), RawDataGrid::IsNumber);
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

QString WithThousands(const QString& line) {
  const QString number = ReadingsOf(line).point;
  return number == OneValue(line) ? QString() : number;
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
  const auto grid = RawDataGrid::In(lines);
  if (!grid) return LineOffers(lines);
  QList<Offer> offers = GridOffers(*grid);
  // Below a heading with a comma the others may be decimal all the same: "Length, mm".
  if (!ReadingsOf(lines[0]).Any() && CommasAreDecimal(lines.sliced(1))) {
    QList<Offer> others = LineOffers(lines);
    erase_if(others, [](const Offer& offer) { return offer.kind != Offer::DecimalCommas; });
    offers << others;
  }
  return offers;
}

QString Apply(const Offer& offer, const QString& text) {
  const QStringList lines = LinesOf(text);
  QStringList values;
  if (offer.kind == Offer::Column || offer.kind == Offer::AllCells) {
    const auto grid = RawDataGrid::In(lines);
    if (!grid) return text;
    if (offer.kind == Offer::Column) return FromCells(grid->Column(offer.column));
    for (const QStringList& row : grid->rows) values << row;
    return FromCells(values);
  }
  for (const QString& line : lines) {
    const bool isMeant = offer.unit.isNull() || ReadingsOf(line).unit == offer.unit;
    values << (isMeant ? InReading(offer.kind, line) : QStringList{line});
  }
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
      doubt = Doubt{
          line, number, OneValue(line), RawDataLines::NumbersBetweenCommas(line), 0, WithThousands(line)};
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
