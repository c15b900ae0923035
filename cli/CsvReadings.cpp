#include "cli/CsvReadings.h"

#include <algorithm>
#include <optional>

#include "data/RawDataLines.h"
#include "platform/language/Conversions.h"
#include "texts/CsvWords.h"
#include "texts/NumberWords.h"

using namespace Qt::StringLiterals;
using WrittenNumbers::Decimal;

namespace CsvReadings {

namespace {

bool IsDigit(QChar c) { return c >= u'0' && c <= u'9'; }

bool HasDigit(const QString& text) { return std::ranges::any_of(text, IsDigit); }

bool BeginsLikeNumber(const QString& text) { return text[0].isDigit() || u"+-.,\u2212"_s.contains(text[0]); }

// A mistyped number in the first line is no heading ("<0.5", "O.5", "(5.2 mm)"): it would be lost as one.
bool LooksLikeValue(const QString& text) {
  if (!HasDigit(text)) return false;
  const auto isLetterOrDigit = [](QChar c) { return c.isLetterOrNumber(); };
  const auto start = std::ranges::find_if(text, isLetterOrDigit);
  return std::ranges::count_if(text, [](QChar c) { return c.isLetter(); }) < 2 ||
         RawDataLines::ReadingsOf(QStringView(start, text.end())).Any();
}

// Finds the column in a table and reads it in every way that it allows.
class Column {
 public:
  Column(const QString& name, const CsvTable& table, const CsvOptions& options)
      : name_(name), table_(table), options_(options) {
    if (table.openQuote > 0) throw InputError(Words::Csv::openQuote(name, table.openQuote));
    if (table.rows.empty()) throw NoSuchColumn(Words::Csv::noValues(name));
    for (const CsvRow& row : table.rows) RequireFields(row);
    const bool byName = Find();
    TakeHeading(byName);
    CollectFields();
  }

  // An InputError that names the first fault where there is none.
  std::vector<Outcome> Outcomes() const {
    std::vector<Outcome> outcomes;
    for (const Decimal mark : {Decimal::Point, Decimal::Comma}) {
      if (options_.notation.decimal.value_or(mark) != mark) continue;
      std::optional<Outcome> outcome = Read(mark);
      if (outcome && (outcomes.empty() || !SameValues(outcomes[0], *outcome))) outcomes.push_back(*outcome);
    }
    if (outcomes.empty()) ThrowFault();
    if (outcomes.size() > 1 && PointIsDecimal(outcomes[0], outcomes[1])) outcomes.pop_back();
    if (options_.notation.separator.isNull()) RequireNoList(outcomes[0]);
    return outcomes;
  }

 private:
  QString Place(int line) const {
    return heading_.isEmpty() ? Words::Csv::place(name_, line, index_ + 1)
                              : Words::Csv::placeWithHeading(name_, line, index_ + 1, Shown(heading_));
  }

  const std::vector<CsvField>& First() const { return table_.rows.front().fields; }

  QStringList FirstTexts() const {
    QStringList texts;
    for (const CsvField& field : First()) texts << field.text;
    return texts;
  }

  // A row with more fields than the first is a wrong separator, or decimal commas between commas.
  void RequireFields(const CsvRow& row) const {
    if (row.fields.size() <= First().size()) return;
    throw InputError(Words::Csv::uneven(name_, row.line, row.fields.size(), First().size()));
  }

  // Sets the place of the column; true where its heading was named.
  bool Find() {
    const QStringList headings = FirstTexts();
    const QString& column = options_.column;
    if (column.isEmpty()) {
      if (headings.size() == 1) return false;
      const bool mayBeDecimal = table_.separator == u',' && std::ranges::all_of(headings, IsNumber);
      const auto& refusal = mayBeDecimal ? Words::Csv::columnsOrDecimals : Words::Csv::severalColumns;
      throw InputError(refusal(name_, headings.size(), Shown(headings.join(u", "_s))));
    }
    bool isPlace = false;
    const int place = column.toInt(&isPlace);
    if (isPlace && place >= 1 && place <= headings.size()) {
      index_ = static_cast<std::size_t>(place - 1);
      return false;
    }
    for (const Qt::CaseSensitivity sensitivity : {Qt::CaseSensitive, Qt::CaseInsensitive}) {
      const auto isIt = [&](const QString& text) { return text.compare(column.trimmed(), sensitivity) == 0; };
      const auto count = std::ranges::count_if(headings, isIt);
      if (count > 1) throw InputError(Words::Csv::oneHeadingTwice(name_, count, column));
      if (count == 0) continue;
      index_ = static_cast<std::size_t>(std::ranges::find_if(headings, isIt) - headings.begin());
      return true;
    }
    throw NoSuchColumn(Words::Csv::noSuchColumn(name_, column, Shown(headings.join(u", "_s))));
  }

  void TakeHeading(bool byName) {
    const QString first = First()[index_].text;
    const bool isText = !first.isEmpty() && !BeginsLikeNumber(first);
    const int line = table_.rows.front().line;
    if (!byName && isText && LooksLikeValue(first))
      throw InputError(Words::Csv::headingOrFault(name_, line, Shown(first)));
    if (!byName && !isText) {
      if (!OthersAreHeadings() && !IsAlone(first)) return;
      if (IsNumber(first)) throw InputError(Words::Csv::headingOrValue(name_, line, first));
      if (!first.isEmpty()) return;
    }
    heading_ = first;
    dataFrom_ = 1;
  }

  // Whether a whole number in the first line, such as a year, lies where no value is expected, unlike all
  // others.
  bool IsAlone(const QString& first) const {
    const bool isWhole = !first.isEmpty() && std::ranges::all_of(first, IsDigit);
    if (!isWhole || !options_.expected || IsExpected(first) || table_.rows.size() < 2) return false;
    return std::all_of(table_.rows.begin() + 1, table_.rows.end(), [&](const CsvRow& row) {
      if (index_ >= row.fields.size() || row.fields[index_].text.isEmpty()) return true;
      const QString& text = row.fields[index_].text;
      return IsExpected(WrittenNumbers::Read(text, Decimal::Point)) ||
             IsExpected(WrittenNumbers::Read(text, Decimal::Comma));
    });
  }

  // Whether a number in the program's own form lies where values are expected.
  bool IsExpected(const QString& number) const {
    if (number.isEmpty()) return false;
    const double value = Conversions::CDbl(number);
    return value >= options_.expected->first && value <= options_.expected->second;
  }

  // Whether another column has a text in the first line, and numbers in all others; or no digit there, and
  // some in all others, as times have.
  bool OthersAreHeadings() const {
    for (std::size_t i = 0; i < First().size(); ++i) {
      if (i == index_ || First()[i].text.isEmpty()) continue;
      if (IsUnlikeOthers(i, IsNumber) || IsUnlikeOthers(i, HasDigit)) return true;
    }
    return false;
  }

  // Whether the first line's field is not such, and all others are, as far as there are any.
  bool IsUnlikeOthers(std::size_t column, bool (*isSuch)(const QString&)) const {
    if (isSuch(First()[column].text)) return false;
    qsizetype such = 0;
    return std::all_of(table_.rows.begin() + 1, table_.rows.end(),
                       [&](const CsvRow& row) {
                         if (column >= row.fields.size() || row.fields[column].text.isEmpty()) return true;
                         return isSuch(row.fields[column].text) && ++such > 0;
                       }) &&
           such > 0;
  }

  void CollectFields() {
    int emptyLine = 0;  // of the first empty field since the last number
    for (std::size_t i = dataFrom_; i < table_.rows.size(); ++i) {
      const CsvRow& row = table_.rows[i];
      const CsvField field = index_ < row.fields.size() ? row.fields[index_] : CsvField{};
      if (field.text.isEmpty()) {
        if (emptyLine == 0) emptyLine = row.line;
        continue;
      }
      if (emptyLine != 0) throw InputError(Words::Csv::noNumber(Place(emptyLine)));
      fields_.push_back({row.line, field.text, {}});
      hasBareComma_ = hasBareComma_ || (!field.quoted && field.text.contains(u','));
    }
    if (fields_.empty())
      throw NoSuchColumn(emptyLine != 0 ? Words::Csv::noNumber(Place(emptyLine))
                                        : Words::Csv::noValues(name_));
  }

  std::optional<Outcome> Read(Decimal mark) const {
    Outcome outcome{table_.separator, mark, hasBareComma_, fields_};
    for (Number& number : outcome.numbers) {
      number.value = WrittenNumbers::Read(number.text, mark);
      if (number.value.isEmpty()) return std::nullopt;
    }
    return outcome;
  }

  // Whether every value has a point, and by the values expected it is a decimal one that separates no
  // thousands.
  bool PointIsDecimal(const Outcome& points, const Outcome& commas) const {
    if (!options_.expected) return false;
    bool pointExpected = false;
    for (std::size_t i = 0; i < fields_.size(); ++i) {
      if (!fields_[i].text.contains(u'.')) return false;
      if (!WrittenNumbers::HasTwoReadings(fields_[i].text)) continue;
      if (fields_[i].text.contains(u',') || IsExpected(commas.numbers[i].value)) return false;
      pointExpected = pointExpected || IsExpected(points.numbers[i].value);
    }
    return pointExpected;
  }

  // Refuses a plain blank between thousands where it may as well stand between values, by the values
  // expected.
  void RequireNoList(const Outcome& outcome) const {
    for (const Number& number : outcome.numbers) {
      const QStringList pieces = number.text.split(u' ', Qt::SkipEmptyParts);
      const auto mayBeValue = [&](const QString& piece) {
        return !options_.expected || IsExpected(WrittenNumbers::Read(piece, outcome.mark));
      };
      const bool isOne = pieces.size() < 2 || (options_.expected && IsExpected(number.value) &&
                                               !std::ranges::all_of(pieces, mayBeValue));
      if (isOne) continue;
      const WrittenNumbers::Reading joined{number.value, SeparatorOption(outcome.separator)};
      throw InputError(
          Words::Csv::line(name_, number.line, WrittenNumbers::Doubt(Shown(number.text), {joined})));
    }
  }

  [[noreturn]] void ThrowFault() const {
    const auto mark = options_.notation.decimal;
    const auto reads = [](const Number& field, Decimal decimal) {
      return !WrittenNumbers::Read(field.text, decimal).isEmpty();
    };
    for (const Number& field : fields_) {
      if (mark ? reads(field, *mark) : IsNumber(field.text)) continue;
      const auto& refusal = !mark                     ? Words::Csv::isNone
                            : *mark == Decimal::Point ? Words::Csv::isNoneWithPoint
                                                      : Words::Csv::isNoneWithComma;
      throw InputError(refusal(Place(field.line), Shown(field.text)));
    }
    const auto notPoint =
        std::ranges::find_if(fields_, [&](const Number& f) { return !reads(f, Decimal::Point); });
    const auto notComma =
        std::ranges::find_if(fields_, [&](const Number& f) { return !reads(f, Decimal::Comma); });
    throw InputError(Words::Csv::bothMarks(Place(std::max(notPoint->line, notComma->line)), notPoint->text,
                                           notPoint->line, notComma->text, notComma->line));
  }

  const QString& name_;
  const CsvTable& table_;
  const CsvOptions& options_;
  std::size_t index_ = 0;
  QString heading_;
  std::size_t dataFrom_ = 0;
  std::vector<Number> fields_;
  bool hasBareComma_ = false;
};

}  // namespace

QString SeparatorOption(QChar separator) {
  const auto& option = separator == u','    ? Words::Numbers::separatorComma
                       : separator == u'\t' ? Words::Numbers::separatorTab
                                            : Words::Numbers::separatorSemicolon;
  return option();
}

bool SameValues(const Outcome& a, const Outcome& b) {
  return std::ranges::equal(a.numbers, b.numbers, {}, &Number::value, &Number::value);
}

bool IsNumber(const QString& text) {
  return !WrittenNumbers::Read(text, Decimal::Point).isEmpty() ||
         !WrittenNumbers::Read(text, Decimal::Comma).isEmpty();
}

QString Shown(const QString& text) {
  constexpr qsizetype longest = 60;
  return text.size() > longest ? text.left(longest) + u"..."_s : text;
}

std::vector<Outcome> Of(const CsvTable& table, const QString& name, const CsvOptions& options) {
  return Column(name, table, options).Outcomes();
}

}  // namespace CsvReadings
