#include "verify/VerificationReport.h"

#include <QBuffer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPdfWriter>
#include <QSysInfo>
#include <QTextDocument>
#include <algorithm>
#include <cmath>

#include "texts/VerifyWords.h"

using namespace Qt::StringLiterals;
using Verification::Check;
using Verification::Quantity;

namespace {

// Cut, not rounded: 14.99 digits are not 15.
QString DigitsText(double digits) { return QString::number(std::floor(digits * 10) / 10); }

// Of two long texts the part where they begin to differ.
QString Excerpt(const QString& text, const QString& other) {
  constexpr qsizetype longest = 60;
  if (text.size() <= longest) return text;
  const auto [here, there] = std::mismatch(text.begin(), text.end(), other.begin(), other.end());
  const qsizetype start = std::max<qsizetype>(here - text.begin() - 10, 0);
  return (start > 0 ? u"..."_s : QString()) + text.mid(start, longest) +
         (start + longest < text.size() ? u"..."_s : QString());
}

QStringList Differences(const Check& check) {
  constexpr qsizetype most = 10;
  QStringList lines;
  for (const Quantity& quantity : check.quantities) {
    if (quantity.digits >= check.requiredDigits) continue;
    lines << Words::Verify::difference(quantity.name, Excerpt(quantity.expected, quantity.actual),
                                       Excerpt(quantity.actual, quantity.expected));
  }
  if (lines.size() <= most) return lines;
  return lines.first(most) << Words::Verify::moreDifferences(lines.size() - most);
}

QJsonObject JsonOf(const Check& check) {
  QJsonArray quantities;
  for (const Quantity& quantity : check.quantities) {
    quantities.append(QJsonObject{{u"name"_s, quantity.name},
                                  {u"expected"_s, quantity.expected},
                                  {u"actual"_s, quantity.actual},
                                  {u"digits"_s, quantity.digits}});
  }
  return {{u"group"_s, check.group},
          {u"name"_s, check.name},
          {u"source"_s, check.source},
          {u"digits"_s, check.Digits()},
          {u"requiredDigits"_s, check.requiredDigits},
          {u"passed"_s, check.Passed()},
          {u"quantities"_s, quantities}};
}

QString SystemText() { return QSysInfo::prettyProductName() + u", "_s + QSysInfo::currentCpuArchitecture(); }

QString Verdict(const Check& check) {
  return check.Passed() ? Words::Verify::agrees() : Words::Verify::differs();
}

}  // namespace

QString VerificationReport::Summary() const {
  const auto failed =
      std::count_if(checks.begin(), checks.end(), [](const Check& check) { return !check.Passed(); });
  return failed == 0 ? Words::Verify::allAgree(checks.size())
                     : Words::Verify::someDiffer(failed, checks.size());
}

QString VerificationReport::Text() const {
  QString text = Words::Verify::checked(version, date.toString(Qt::ISODate), SystemText());
  QString group;
  for (const Check& check : checks) {
    if (check.group != group) text += u"\n%1\n"_s.arg(group = check.group);
    const QString digits = Words::Verify::digits(DigitsText(check.Digits()).rightJustified(4),
                                                 QString::number(check.requiredDigits).rightJustified(2));
    text += u"  %1  %2  %3\n"_s.arg(digits, Verdict(check).leftJustified(7), check.name);
    for (const QString& line : Differences(check)) text += u"            %1\n"_s.arg(line);
  }
  return text + u"\n%1\n"_s.arg(Summary());
}

QByteArray VerificationReport::Json() const {
  QJsonArray array;
  for (const Check& check : checks) array.append(JsonOf(check));
  return QJsonDocument(QJsonObject{{u"program"_s, u"Kestrel"_s},
                                   {u"version"_s, version},
                                   {u"date"_s, date.toString(Qt::ISODate)},
                                   {u"system"_s, SystemText()},
                                   {u"passed"_s, Verification::AllPassed(checks)},
                                   {u"checks"_s, array}})
      .toJson();
}

QString VerificationReport::Html() const {
  QString html = u"<h1>%1</h1><p>%2</p><p><b>%3</b></p><p>%4</p>"_s.arg(
                     Words::Verify::heading(),
                     Words::Verify::checkedHere(version, date.toString(u"yyyy-MM-dd HH:mm"_s), SystemText())
                         .toHtmlEscaped(),
                     Summary(), Words::Verify::tableTells()) +
                 u"<table width='100%' cellspacing='0' cellpadding='1'>"_s;
  QString group;
  for (const Check& check : checks) {
    if (check.group != group) {
      group = check.group;
      html += u"<tr><td colspan='4' style='padding-top:9px'><b>%1</b></td></tr>"_s.arg(group.toHtmlEscaped());
    }
    html +=
        u"<tr><td width='37%'>%1</td><td width='43%' style='color:#555555'>%2</td>"
        "<td align='right'>%3&nbsp;of&nbsp;%4</td><td style='padding-left:6px'>%5</td></tr>"_s
            .arg(check.name.toHtmlEscaped(), check.source.toHtmlEscaped(), DigitsText(check.Digits()))
            .arg(check.requiredDigits)
            .arg(check.Passed() ? Verdict(check) : u"<b style='color:#b00000'>%1</b>"_s.arg(Verdict(check)));
    for (const QString& line : Differences(check)) {
      html += u"<tr><td colspan='4' style='color:#b00000'>%1</td></tr>"_s.arg(line.toHtmlEscaped());
    }
  }
  return html + u"</table>"_s;
}

QByteArray VerificationReport::Pdf() const {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QPdfWriter writer(&buffer);
  writer.setTitle(Words::Verify::title(version));
  writer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait, {}));
  QTextDocument document;
  QFont font(u"DejaVu Sans"_s);
  font.setPointSizeF(7.5);
  document.setDefaultFont(font);
  document.setHtml(Html());
  document.print(&writer);  // with margins and page numbers
  return bytes;
}
