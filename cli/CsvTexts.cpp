#include "cli/CsvTexts.h"

#include <QRegularExpression>
#include <algorithm>

#include "data/WrittenNumbers.h"

using namespace Qt::StringLiterals;
using WrittenNumbers::Decimal;

namespace CsvTexts {

bool HasDigit(const QString& text) { return std::ranges::any_of(text, IsDigit); }

bool BeginsLikeNumber(const QString& text) { return text[0].isDigit() || u"+-.,\u2212"_s.contains(text[0]); }

bool IsNumber(const QString& text) {
  return !WrittenNumbers::Read(text, Decimal::Point).isEmpty() ||
         !WrittenNumbers::Read(text, Decimal::Comma).isEmpty();
}

bool StandsForValue(const QString& text) {
  static const QRegularExpression form(
      u"^(?:NA|na|ND|nd|OL|N?IO|n?iO|#[A-Z/0!?]+|[\u2013\u2014?*/_]+|"
      u"(?i:nan|inf(?:inity)?|n[./][adv]\\.?|[kn]\\. ?[av]\\.|n?[./]? ?i\\. ?o\\.|n\\.? ?o\\. "
      u"?k\\.|n?ok|null|none|"
      u"nil|err(?:or)?|over(?:flow|range)?|pass|fail|missing))$"_s);
  return form.match(text).hasMatch();
}

QString UnitIn(const QString& text) {
  static const QRegularExpression form(u"^(?:\\s+[^,]+|(?![:/-]\\s*\\d)[^\\s\\d.,][^,]*)$"_s);
  for (qsizetype size = text.size() - 1; size > 0; --size) {
    const QChar last = text[size - 1];
    if ((!IsDigit(last) && last != u'.') || !IsNumber(text.first(size))) continue;
    const QString rest = text.sliced(size);
    return form.match(rest).hasMatch() ? rest.trimmed() : QString();
  }
  return {};
}

QString WithoutUnit(const QString& text, const QString& unit) {
  if (unit.isEmpty() || !text.endsWith(unit) || IsNumber(text)) return text;
  const QString number = text.chopped(unit.size());
  const bool isPart = BeginsLikeNumber(unit) && !number.isEmpty() && !number.back().isSpace();
  return isPart || !IsNumber(number) ? text : number.trimmed();
}

QString Shown(const QString& text) {
  constexpr qsizetype longest = 60;
  return text.size() > longest ? text.left(longest) + u"..."_s : text;
}

}  // namespace CsvTexts
