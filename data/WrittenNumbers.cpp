#include "data/WrittenNumbers.h"

#include <algorithm>
#include <optional>

#include "platform/language/Conversions.h"

using namespace Qt::StringLiterals;

namespace WrittenNumbers {

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

}  // namespace

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

}  // namespace WrittenNumbers
