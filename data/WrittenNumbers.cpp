#include "data/WrittenNumbers.h"

#include <QRegularExpression>
#include <algorithm>

#include "platform/error/Error.h"
#include "platform/language/Conversions.h"
#include "texts/NumberWords.h"

using namespace Qt::StringLiterals;

namespace WrittenNumbers {

namespace Numbers = Words::Numbers;

namespace {

constexpr QChar minus(0x2212);

// What stands between thousands besides the other decimal mark: blanks (no-break, thin) and apostrophes.
bool IsGroupMark(QChar c) { return u" \u00A0\u2009\u202F'\u2019"_s.contains(c); }

bool IsDigit(QChar c) { return c >= u'0' && c <= u'9'; }

// The digits of a whole part; nothing where what else it holds does not set thousands apart, one mark
// throughout.
std::optional<QString> WithoutGroups(QStringView whole, QChar otherDecimal) {
  QString digits;
  QChar mark;
  qsizetype inGroup = 0;
  for (const QChar c : whole) {
    if (IsDigit(c)) {
      digits += c;
      ++inGroup;
      continue;
    }
    if (c != otherDecimal && !IsGroupMark(c)) return std::nullopt;
    const bool firstGroup = mark.isNull() && inGroup >= 1 && inGroup <= 3 && digits[0] != u'0';
    const bool laterGroup = c == mark && inGroup == 3;
    if (!firstGroup && !laterGroup) return std::nullopt;
    mark = c;
    inGroup = 0;
  }
  if (!mark.isNull() && inGroup != 3) return std::nullopt;
  return digits;
}

QString Joined(const QStringList& values) {
  constexpr qsizetype most = 4;
  if (values.size() < 2) return values.join(QString());
  const bool all = values.size() <= most;
  const qsizetype shown = all ? values.size() - 1 : most - 1;
  const QString first = values.mid(0, shown).join(u", "_s);
  return all ? Numbers::both(first, values.back()) : Numbers::andMore(first, values.size() - shown);
}

// What a word may mean.
class Word {
 public:
  Word(const QString& text, const Notation& notation) : text_(text), notation_(notation) {
    const bool onlyList = notation.separator == u',';
    const bool noList = notation.decimal == Decimal::Comma || !(notation.separator.isNull() || onlyList);
    if (!onlyList || !text.contains(u',')) {
      for (const Decimal mark : {Decimal::Point, Decimal::Comma})
        if (Allows(mark)) Add({Read(text, mark)}, OneValue(mark));
    }
    if (!noList && text.contains(u',')) Add(Pieces(), Numbers::separatorComma());
  }

  // Empty where it is no number.
  QStringList Values() const {
    if (readings_.isEmpty()) return {};
    const bool told = notation_.decimal || !notation_.separator.isNull();
    if (readings_.size() == 1 && (told || !text_.contains(u','))) return readings_.front();
    if (!told && IsPlainList()) return readings_.back();
    QList<Reading> readings;
    for (qsizetype i = 0; i < readings_.size(); ++i) readings << Reading{Joined(readings_[i]), options_[i]};
    throw InputError(Doubt(text_, readings));
  }

 private:
  // Without a comma in it a word is in the program's own notation, unless another was told.
  bool Allows(Decimal mark) const {
    if (!text_.contains(u',')) return mark == notation_.decimal.value_or(Decimal::Point);
    return mark == notation_.decimal.value_or(mark);
  }

  // What makes one value of a word with commas: a decimal point alone leaves them separators.
  QString OneValue(Decimal mark) const {
    return mark == Decimal::Point && notation_.separator.isNull() ? Numbers::pointAndSemicolon()
                                                                  : Option(mark);
  }

  void Add(const QStringList& values, const QString& option) {
    if (values.isEmpty() || values.contains(QString()) || readings_.contains(values)) return;
    readings_ << values;
    options_ << option;
  }

  QStringList Pieces() const {
    QStringList pieces;
    for (const QString& piece : text_.split(u',', Qt::SkipEmptyParts)) pieces << Read(piece, Decimal::Point);
    return pieces;
  }

  // Values that all have a decimal point, or one with the comma behind it that a list has.
  bool IsPlainList() const {
    const QStringList pieces = text_.split(u',');
    if (pieces.size() == 2 && pieces[1].isEmpty()) return true;
    const auto hasPoint = [](const QString& piece) { return piece.isEmpty() || piece.contains(u'.'); };
    return options_.back() == Numbers::separatorComma() && std::ranges::all_of(pieces, hasPoint);
  }

  const QString& text_;
  const Notation& notation_;
  QList<QStringList> readings_;
  QStringList options_;
};

QStringList Words(const QString& text, const Notation& notation) {
  static const QRegularExpression blanks(u"[\\s;]+"_s);
  static const QRegularExpression lineEnds(u"[\\r\\n]+"_s);
  if (notation.separator.isNull()) return text.split(blanks, Qt::SkipEmptyParts);
  QStringList words;
  for (const QString& line : text.split(lineEnds, Qt::SkipEmptyParts)) {
    for (const QString& field : line.split(notation.separator))
      if (const QString word = field.trimmed(); !word.isEmpty()) words << word;
  }
  return words;
}

// Between thousands a blank would make two values of one.
void RefuseBlankBetweenThousands(const QString& text, const Notation& notation) {
  if (!notation.separator.isNull()) return;
  static const QRegularExpression form(u"(?<!\\S)[-+\u2212]?[1-9]\\d{0,2}(?: \\d{3})+[.,]\\d+(?!\\S)"_s);
  const QString found = form.match(text).captured();
  if (found.isEmpty()) return;
  throw InputError(Numbers::oneOrSeveral(found));
}

}  // namespace

QString Option(Decimal mark) {
  return mark == Decimal::Point ? Numbers::decimalPoint() : Numbers::decimalComma();
}

QString Read(QStringView text, Decimal mark) {
  text = text.trimmed();
  QString sign;
  if (text.startsWith(minus) || text.startsWith(u'-') || text.startsWith(u'+')) {
    sign = text[0] == u'+' ? u"+"_s : u"-"_s;
    text = text.sliced(1);
  }
  const QChar decimal = mark == Decimal::Point ? u'.' : u',';
  const QChar other = mark == Decimal::Point ? u',' : u'.';
  const auto wholeEnd =
      std::ranges::find_if(text, [&](QChar c) { return !IsDigit(c) && c != other && !IsGroupMark(c); });
  const QStringView whole(text.begin(), wholeEnd);
  QString rest = QStringView(wholeEnd, text.end()).toString();
  if (rest.startsWith(decimal)) rest[0] = u'.';
  rest.replace(u"e\u2212"_s, u"e-"_s).replace(u"E\u2212"_s, u"E-"_s);
  const std::optional<QString> digits = WithoutGroups(whole, other);
  const bool grouped = digits && digits->size() != whole.size();
  if (!digits || (grouped && rest.contains(u'e', Qt::CaseInsensitive))) return {};
  const QString number = sign + *digits + rest;
  return Conversions::IsNumeric(number) ? number : QString();
}

bool HasTwoReadings(QStringView text) {
  if (!text.contains(u'.') && !text.contains(u',')) return false;
  const QString point = Read(text, Decimal::Point);
  const QString comma = Read(text, Decimal::Comma);
  return !point.isEmpty() && !comma.isEmpty() && point != comma;
}

QStringList ReadList(const QString& text, const Notation& notation, qsizetype before) {
  RefuseBlankBetweenThousands(text, notation);
  QStringList values;
  for (const QString& word : Words(text, notation)) {
    const QStringList found = Word(word, notation).Values();
    if (found.isEmpty()) {
      const QString shown = word.size() > 60 ? word.left(60) + u"..."_s : word;
      const qsizetype number = before + values.size() + 1;
      throw InputError(notation.decimal == Decimal::Comma ? Numbers::isNoneWithComma(number, shown)
                                                          : Numbers::isNone(number, shown));
    }
    values += found;
  }
  return values;
}

QString Doubt(const QString& text, const QList<Reading>& readings) {
  if (readings.size() == 1) return Numbers::onlyWith(text, readings[0].meaning, readings[0].option);
  QStringList words;
  for (const Reading& reading : readings) words << Numbers::reading(reading.meaning, reading.option);
  const QString last = words.takeLast();
  return Numbers::mayBe(text, Numbers::orElse(words.join(u", "_s), last));
}

}  // namespace WrittenNumbers
