#include "cli/CsvColumn.h"

#include <QFile>
#include <QRegularExpression>
#include <QStringDecoder>
#include <algorithm>
#include <vector>

#include "cli/CsvHeadings.h"
#include "cli/CsvReadings.h"
#include "cli/CsvTable.h"
#include "cli/CsvTexts.h"
#include "platform/error/Error.h"
#include "texts/CsvWords.h"
#include "texts/NumberWords.h"

using namespace Qt::StringLiterals;
using WrittenNumbers::Decimal;
using namespace CsvReadings;
using namespace CsvTexts;

namespace {

// Tries every separator that the text allows, and insists on one result.
class Reader {
 public:
  Reader(const QString& name, QString text, const CsvOptions& options)
      : name_(name), text_(std::move(text)), options_(options) {
    // Spreadsheets say so what separates.
    static const QRegularExpression form(u"^\"?sep=([;,\\t|])\"?\\n"_s);
    if (const QRegularExpressionMatch match = form.match(text_); match.hasMatch()) {
      if (options_.notation.separator.isNull()) options_.notation.separator = match.captured(1)[0];
      text_.remove(0, match.capturedLength());
      firstLine_ = 2;
    }
  }

  std::vector<CsvSample> Samples() {
    for (const QChar separator : Separators()) Try(separator);
    if (outcomes_.empty()) throw InputError(failure_.isEmpty() ? missing_ : failure_);
    RequireOne();
    const CsvTable table(text_, outcomes_[0].separator, firstLine_);
    std::vector<std::size_t> places;
    for (const QString& column : options_.beside)
      places.push_back(CsvHeadings::Find(table, column, options_.heading, name_).index);
    std::vector<CsvSample> samples;
    auto row = table.rows.begin();
    for (const Number& number : outcomes_[0].numbers) {
      row = std::find_if(row, table.rows.end(), [&](const CsvRow& at) { return at.line == number.line; });
      QStringList beside;
      for (const std::size_t place : places)
        beside << (place < row->fields.size() ? row->fields[place].text : QString());
      samples.push_back({number.value, number.line, beside});
    }
    return samples;
  }

 private:
  bool SaysDecimalComma() const { return options_.notation.decimal == Decimal::Comma; }

  // Whether the separator is the decimal comma that was told.
  bool HasDecimalCommas(const CsvTable& table) const {
    return SaysDecimalComma() && table.separator == u',' &&
           std::ranges::any_of(table.rows, &CsvRow::IsDividedBetweenDigits);
  }

  // The separators that divide the text; a null one where it may be a single column.
  std::vector<QChar> Separators() const {
    if (!options_.notation.separator.isNull()) return {options_.notation.separator};
    const auto divides = [&](QChar separator) {
      const CsvTable table(text_, separator, firstLine_);
      return !table.rows.empty() && table.rows[0].fields.size() > 1 && table.IsEven() &&
             !LeavesTwoNumbers(table) && !HasDecimalCommas(table);
    };
    if (divides(u'\t')) return {u'\t'};
    std::vector<QChar> separators;
    for (const QChar separator : {QChar(u';'), QChar(u',')})
      if (divides(separator)) separators.push_back(separator);
    if (separators.empty() || separators[0] == u',') {
      if (separators.empty()) AddForItsFault(separators);
      const CsvTable whole(text_, QChar(), firstLine_);
      if (whole.wellFormed || separators.empty()) separators.push_back(QChar());
      if (separators[0] == u',') RequireThatCommasSeparate(whole);
    }
    // Where commas are said to be decimal they are the last to divide.
    if (SaysDecimalComma())
      std::ranges::stable_partition(separators, [](QChar separator) { return separator != u','; });
    return separators;
  }

  // What divides the first line, but not all lines alike.
  void AddForItsFault(std::vector<QChar>& separators) const {
    const QString first = text_.section(u'\n', 0, 0);
    for (const QChar separator : {QChar(u'\t'), QChar(u';'), QChar(u',')}) {
      if (!first.contains(separator) || CsvTable(text_, separator, firstLine_).IsEven()) continue;
      return separators.push_back(separator);
    }
  }

  // Whether commas are no separators, since they would leave two numbers with a semicolon between in one
  // field.
  static bool LeavesTwoNumbers(const CsvTable& table) {
    if (table.separator != u',') return false;
    static const QRegularExpression two(u"^[-+.,\\d]*\\d;[-+.,]*\\d[-+.,\\d]*$"_s);
    return std::ranges::any_of(table.rows, [](const CsvRow& row) {
      return std::ranges::any_of(row.fields, [](const CsvField& field) {
        return !field.quoted && two.match(field.text).hasMatch();
      });
    });
  }

  // Refuses commas that may as well stand in the heading of a single column ("Length, mm").
  void RequireThatCommasSeparate(const CsvTable& whole) const {
    static const QRegularExpression bareComma(u",(?! )"_s);
    const QString heading = whole.rows.empty() ? QString() : whole.rows.front().fields[0].text;
    bool isOneColumn = !SaysDecimalComma() && heading.contains(u',') && !heading.contains(bareComma) &&
                       !heading.contains(u'"');
    bool hasComma = false;
    for (const CsvRow& row : whole.rows) {
      const CsvField& line = row.fields[0];
      if (line.quoted) continue;
      const bool isHeading = &row == &whole.rows.front();
      isOneColumn &= IsNumber(line.text) != isHeading;
      hasComma |= !isHeading && line.text.contains(u',');
    }
    if (isOneColumn && hasComma)
      throw InputError(Words::Csv::headingOrColumns(name_, whole.rows.front().line, Shown(heading)));
  }

  void Try(QChar separator) {
    if (SaysDecimalComma() && !outcomes_.empty()) return;
    const CsvTable table(text_, separator, firstLine_);
    try {
      for (Outcome& outcome : CsvReadings::Of(table, name_, options_)) {
        const auto same = [&](const Outcome& other) { return SameValues(other, outcome); };
        if (std::ranges::none_of(outcomes_, same)) outcomes_.push_back(std::move(outcome));
      }
    } catch (const CsvHeadings::NoSuchColumn& error) {
      if (missing_.isEmpty()) missing_ = ErrorText(error);
    } catch (const InputError& error) {
      // What a weaker separator makes of the file is no way out. A comma is one while no column is named.
      const bool isStrong =
          separator == u';' || separator == u'\t' || (options_.column.isEmpty() && !SaysDecimalComma());
      if (isStrong) throw;
      if (failure_.isEmpty()) failure_ = ErrorText(error);
    }
  }

  QString OptionFor(const Outcome& outcome, bool separatorTells) const {
    if (!separatorTells) return WrittenNumbers::Option(outcome.mark);
    if (outcome.separator.isNull() && !options_.notation.decimal) return WrittenNumbers::Option(outcome.mark);
    const QString option = SeparatorOption(outcome.separator);
    const auto alike = std::ranges::count(outcomes_, outcome.separator, &Outcome::separator);
    return alike > 1 ? option + u' ' + WrittenNumbers::Option(outcome.mark) : option;
  }

  void RequireOne() const {
    const Outcome& first = outcomes_[0];
    const bool told = options_.notation.decimal || !options_.notation.separator.isNull();
    if (outcomes_.size() == 1 && (told || !first.separator.isNull() || !first.hasBareComma)) return;
    QList<WrittenNumbers::Reading> readings;
    const std::size_t at = FirstDifference();
    const bool separatorTells = std::ranges::any_of(
        outcomes_, [&](const Outcome& outcome) { return outcome.separator != first.separator; });
    Number shown;
    for (const Outcome& outcome : outcomes_) {
      if (at < outcome.numbers.size() && outcome.numbers[at].text.size() > shown.text.size())
        shown = outcome.numbers[at];
      const QString meaning = at < outcome.numbers.size() ? outcome.numbers[at].value : Words::Csv::noValue();
      readings << WrittenNumbers::Reading{meaning, OptionFor(outcome, separatorTells)};
    }
    if (first.separator.isNull() && first.hasBareComma && !told && outcomes_.size() < 3)
      readings << WrittenNumbers::Reading{Words::Csv::asColumns(), Words::Numbers::separatorComma()};
    throw InputError(Words::Csv::line(name_, shown.line, WrittenNumbers::Doubt(Shown(shown.text), readings)));
  }

  // The place among the numbers at which the outcomes part.
  std::size_t FirstDifference() const {
    const std::vector<Number>& numbers = outcomes_[0].numbers;
    if (outcomes_.size() == 1)
      return static_cast<std::size_t>(
          std::ranges::find_if(numbers, [](const Number& n) { return n.text.contains(u','); }) -
          numbers.begin());
    const std::vector<Number>& others = outcomes_[1].numbers;
    const auto [one, other] = std::ranges::mismatch(numbers, others, {}, &Number::value, &Number::value);
    return static_cast<std::size_t>(one - numbers.begin());
  }

  const QString& name_;
  QString text_;
  CsvOptions options_;
  int firstLine_ = 1;
  std::vector<Outcome> outcomes_;
  QString failure_;
  QString missing_;  // what is said where nothing else failed
};

QString Decoded(const QByteArray& bytes, const QString& name) {
  QString text;
  if (const auto encoding = QStringConverter::encodingForData(bytes)) {
    text = QStringDecoder(*encoding)(bytes);
  } else {
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    text = utf8(bytes);
    // An older spreadsheet writes its system's code page; 0x92 is an apostrophe there.
    if (utf8.hasError()) text = QString::fromLatin1(bytes).replace(QChar(0x92), QChar(0x2019));
  }
  if (text.contains(QChar(0))) throw InputError(Words::Csv::notText(name));
  return text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
}

}  // namespace

std::vector<CsvSample> ReadCsvColumn(const QString& path, const CsvOptions& options) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) throw Error(u"%1: %2"_s.arg(path, file.errorString()));
  const QByteArray bytes = file.readAll();
  if (file.error() != QFileDevice::NoError) throw Error(u"%1: %2"_s.arg(path, file.errorString()));
  return ParseCsvColumn(bytes, path, options);
}

std::vector<CsvSample> ParseCsvColumn(const QByteArray& bytes, const QString& name,
                                      const CsvOptions& options) {
  return Reader(name, Decoded(bytes, name), options).Samples();
}
