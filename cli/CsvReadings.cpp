#include "cli/CsvReadings.h"

#include <algorithm>
#include <optional>

#include "cli/CsvHeadings.h"
#include "cli/CsvTexts.h"
#include "data/RawDataLines.h"
#include "platform/language/Conversions.h"
#include "texts/CsvWords.h"
#include "texts/NumberWords.h"

using namespace Qt::StringLiterals;
using WrittenNumbers::Decimal;
using namespace CsvTexts;

namespace CsvReadings {

namespace {

// Finds the column in a table and reads it in every way that it allows.
class Column {
 public:
  Column(const QString& name, const CsvTable& table, const CsvOptions& options)
      : name_(name), table_(table), options_(options) {
    if (table.openQuote > 0) throw InputError(Words::Csv::openQuote(name, table.openQuote));
    if (table.rows.empty()) throw CsvHeadings::NoSuchColumn(Words::Csv::noValues(name));
    for (const CsvRow& row : table.rows) RequireFields(row);
    RequireWholeValues();
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
    for (const Outcome& outcome : outcomes) RequireNoHeading(outcome);
    if (outcomes.size() > 1 && PointIsDecimal(outcomes[0], outcomes[1])) outcomes.pop_back();
    if (outcomes.size() == 1) RequireExpected(outcomes[0]);
    if (options_.notation.separator.isNull()) RequireNoList(outcomes[0]);
    return outcomes;
  }

 private:
  QString Place(int line) const {
    return heading_.isEmpty() ? Words::Csv::place(name_, line, index_ + 1)
                              : Words::Csv::placeWithHeading(name_, line, index_ + 1, Shown(heading_));
  }

  const std::vector<CsvField>& First() const { return table_.rows.front().fields; }

  // A row with more fields than the first is a wrong separator, or decimal commas between commas.
  void RequireFields(const CsvRow& row) const {
    if (row.fields.size() <= First().size()) return;
    throw InputError(Words::Csv::uneven(name_, row.line, row.fields.size(), First().size()));
  }

  // Refuses commas that may as well stand within a value in front of its unit ("10,5 m3", "10,5 1/min"),
  // unless a heading over three columns or more shows that they separate.
  void RequireWholeValues() const {
    if (table_.separator != u',' || !options_.notation.separator.isNull()) return;
    const bool areHeadings = std::ranges::none_of(
        First(), [](const CsvField& field) { return field.text.isEmpty() || BeginsLikeNumber(field.text); });
    if (First().size() > 2 && areHeadings) return;
    for (const CsvRow& row : table_.rows) {
      for (std::size_t from = 0; from + 1 < row.fields.size(); ++from) {
        QString joined = row.fields[from].text;
        for (std::size_t i = from + 1; i < row.fields.size() && IsNumber(joined); ++i) {
          if (row.fields[i - 1].quoted || row.fields[i].quoted) break;
          joined += u',' + row.fields[i].text;
          const QString unit = IsNumber(joined) ? QString() : UnitIn(joined);
          if (!unit.isEmpty()) throw InputError(Words::Csv::unitOrColumns(name_, row.line, Shown(joined)));
        }
      }
    }
  }

  // Sets the place of the column; true where its heading was named, or that of one beside it.
  bool Find() {
    const auto place = [&](const QString& column) {
      return CsvHeadings::Find(table_, column, options_.heading, name_);
    };
    bool isNamed = false;
    for (const QString& column : options_.beside) isNamed = place(column).isNamed || isNamed;
    if (!options_.column.isEmpty()) {
      const CsvHeadings::Place found = place(options_.column);
      index_ = found.index;
      return found.isNamed || isNamed;
    }
    const QStringList headings = CsvHeadings::FirstTexts(table_);
    if (headings.size() == 1) return isNamed;
    const QString shown = Shown(headings.join(u", "_s));
    if (table_.separator != u',' || !table_.rows.front().IsDividedBetweenDigits())
      throw InputError(Words::Csv::severalColumns(name_, headings.size(), shown));
    const QString one =
        options_.notation.decimal ? SeparatorOption(QChar()) : WrittenNumbers::Option(Decimal::Comma);
    throw InputError(Words::Csv::columnsOrOne(name_, headings.size(), shown, one));
  }

  void TakeHeading(bool byName) {
    if (options_.heading == false) return;
    const QString first = Value(First()[index_]);
    const bool isKnown = byName || options_.heading == true;
    if (!isKnown && !first.isEmpty()) {
      const QString& written = First()[index_].text;
      const int line = table_.rows.front().line;
      const bool isStrange = BeginsLikeNumber(first) ? !IsNumber(first) : LooksLikeValue(first);
      if (isStrange || (!IsNumber(first) && OthersAreValues()))
        throw InputError(Words::Csv::headingOrFault(name_, line, Shown(written)) + UnitHint(written) +
                         DecimalHint());
      if (IsNumber(first)) {
        if (!OthersAreHeadings(first) && !IsAlone(first)) return;
        throw HeadingOrValue(line, written);
      }
    }
    if (!isKnown && first.isEmpty() && !OthersAreHeadings(first)) return;
    heading_ = First()[index_].text;
    dataFrom_ = 1;
  }

  // A heading that is the place of a column cannot be named by --column.
  InputError HeadingOrValue(int line, const QString& text) const {
    bool isPlace = false;
    const int place = text.toInt(&isPlace);
    isPlace = isPlace && place >= 1 && place <= std::ssize(First());
    return InputError(Words::Csv::headingOrValue(
        name_, line, text, isPlace ? Words::Csv::headingOption() : Words::Csv::columnOption(text)));
  }

  QString Value(const CsvField& field) const { return WithoutUnit(field.text, options_.unit); }

  static QString UnitHint(const QString& text) {
    const QString unit = UnitIn(text);
    return unit.isEmpty() ? unit : Words::Csv::ifUnit(Shown(unit));
  }

  QString DecimalHint() const {
    const bool mayBeDecimal = table_.separator == u',' && !options_.notation.decimal &&
                              table_.rows.front().IsDividedBetweenDigits();
    return mayBeDecimal ? Words::Csv::orDecimalComma() : QString();
  }

  // A mistyped number in the first line is no heading ("<0.5", "O.5", "(5.2 mm)", "ca. 5"), nor what stands
  // for a value: it would be lost as one.
  bool LooksLikeValue(const QString& text) const {
    if (StandsForValue(text)) return true;
    const auto digit = std::ranges::find_if(text, IsDigit);
    if (digit == text.end()) return false;
    if (std::ranges::count_if(text, [](QChar c) { return c.isLetter(); }) < 2) return true;
    const auto start = digit > text.begin() && u"+-.,\u2212"_s.contains(*(digit - 1)) ? digit - 1 : digit;
    const RawDataLines::Readings readings = RawDataLines::ReadingsOf(QStringView(start, text.end()));
    const bool beginsWithIt = std::none_of(text.begin(), digit, [](QChar c) { return c.isLetter(); });
    if (beginsWithIt || !options_.expected) return readings.Any();
    return IsExpected(readings.point) || IsExpected(readings.comma);
  }

  // Refuses a whole number in the first line that may be a heading: most below are written in another way, or
  // it counts from column to column.
  void RequireNoHeading(const Outcome& outcome) const {
    if (options_.heading || dataFrom_ > 0) return;
    const Number& first = outcome.numbers.front();
    if (!std::ranges::all_of(first.text, IsDigit) || first.hasUnit || outcome.numbers.size() < 2) return;
    const auto isUnlike = [&](const Number& number) {
      const bool isWhole = std::ranges::all_of(number.value, IsDigit);
      return number.hasUnit || number.value.contains(u'.') ||
             (isWhole && number.text != number.value && first.text.size() > 3);
    };
    const auto unlike = std::count_if(outcome.numbers.begin() + 1, outcome.numbers.end(), isUnlike);
    const auto others = std::ssize(outcome.numbers) - 1;
    if (4 * unlike >= 3 * others || FirstLineCounts()) throw HeadingOrValue(first.line, first.text);
  }

  // Whether the first line's numbers count up from column to column, and another line's do not.
  bool FirstLineCounts() const {
    const auto counts = [](const CsvRow& row) {
      std::vector<int> numbers;
      for (const CsvField& field : row.fields)
        if (IsNumber(field.text)) numbers.push_back(field.text.toInt());
      const auto isNoStep = [](int left, int right) { return right != left + 1; };
      return numbers.size() > 1 && std::ranges::adjacent_find(numbers, isNoStep) == numbers.end();
    };
    return counts(table_.rows.front()) && !std::ranges::all_of(table_.rows, counts);
  }

  // Whether a number in the first line, such as a year, lies where no value is expected, unlike most others.
  bool IsAlone(const QString& first) const {
    const auto mayBeExpected = [&](const QString& text) {
      return IsExpected(WrittenNumbers::Read(text, Decimal::Point)) ||
             IsExpected(WrittenNumbers::Read(text, Decimal::Comma));
    };
    if (!options_.expected || mayBeExpected(first)) return false;
    qsizetype expected = 0, others = 0;
    for (const CsvRow& row : table_.rows) {
      if (&row == &table_.rows.front() || index_ >= row.fields.size()) continue;
      const bool isExpected = mayBeExpected(Value(row.fields[index_]));
      ++(isExpected ? expected : others);
    }
    return expected > others;
  }

  // Whether a number in the program's own form lies where values are expected.
  bool IsExpected(const QString& number) const {
    if (number.isEmpty()) return false;
    const double value = Conversions::CDbl(number);
    return value >= options_.expected->first && value <= options_.expected->second;
  }

  // Whether another column has a text in the first line, and numbers, dates or times in all others; or, above
  // a whole number such as a year, no digit there, and some in all others.
  bool OthersAreHeadings(const QString& first) const {
    const bool mayBeHeading = std::ranges::all_of(first, IsDigit);
    for (std::size_t i = 0; i < First().size(); ++i) {
      if (i == index_ || First()[i].text.isEmpty()) continue;
      if (IsUnlikeOthers(i, IsNumber) || IsUnlikeOthers(i, BeginsLikeNumber) ||
          (mayBeHeading && IsUnlikeOthers(i, HasDigit)))
        return true;
    }
    return false;
  }

  // Whether another column has a number, a date or a time in the first line as in all others.
  bool OthersAreValues() const {
    for (std::size_t i = 0; i < First().size(); ++i) {
      const bool isValue = i != index_ && !First()[i].text.isEmpty() && BeginsLikeNumber(First()[i].text);
      if (isValue && std::ranges::all_of(table_.rows, [&](const CsvRow& row) {
            return i >= row.fields.size() || row.fields[i].text.isEmpty() ||
                   BeginsLikeNumber(row.fields[i].text);
          }))
        return true;
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
      const QString text = Value(field);
      fields_.push_back({row.line, text, {}, text != field.text});
      hasBareComma_ = hasBareComma_ || (!field.quoted && field.text.contains(u','));
    }
    if (fields_.empty())
      throw CsvHeadings::NoSuchColumn(emptyLine != 0 ? Words::Csv::noNumber(Place(emptyLine))
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

  // Refuses a value that lies where none is expected, although it would not with the other decimal mark.
  void RequireExpected(const Outcome& outcome) const {
    if (!options_.expected || options_.notation.decimal) return;
    const Decimal other = outcome.mark == Decimal::Point ? Decimal::Comma : Decimal::Point;
    for (const Number& number : outcome.numbers) {
      const QString otherwise = WrittenNumbers::Read(number.text, other);
      if (!WrittenNumbers::HasTwoReadings(number.text) || IsExpected(number.value) || !IsExpected(otherwise))
        continue;
      const QString doubt = WrittenNumbers::Doubt(
          Shown(number.text),
          {{number.value, WrittenNumbers::Option(outcome.mark)}, {otherwise, WrittenNumbers::Option(other)}});
      throw InputError(Words::Csv::line(name_, number.line, doubt));
    }
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
      const WrittenNumbers::Reading several{Words::Csv::severalValues(pieces.size()),
                                            Words::Csv::onLinesOfTheirOwn()};
      throw InputError(
          Words::Csv::line(name_, number.line, WrittenNumbers::Doubt(Shown(number.text), {joined, several})));
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
      throw InputError(refusal(Place(field.line), Shown(field.text)) + UnitHint(field.text));
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

std::vector<Outcome> Of(const CsvTable& table, const QString& name, const CsvOptions& options) {
  return Column(name, table, options).Outcomes();
}

}  // namespace CsvReadings
