#include "data/AddedSamples.h"

#include "data/Statistics.h"
#include "data/TAVELDataStringFunctions.h"
#include "platform/language/Conversions.h"

using namespace Qt::StringLiterals;

namespace AddedSamples {

qsizetype CountOf(const CData& data) {
  return data.DelimitedInputString().split(u',', Qt::SkipEmptyParts).size();
}

RawDataText::Examination Examine(const QString& text, const CData& data) {
  std::optional<RawDataText::FlierLimits> fliers;
  if (data.LoFlier() < data.HiFlier()) fliers = {data.LoFlier(), data.HiFlier()};
  std::optional<double> last;
  const QStringList samples = data.DelimitedInputString().split(u',', Qt::SkipEmptyParts);
  if (!samples.isEmpty() && Conversions::IsNumeric(samples.back())) last = Conversions::CDbl(samples.back());
  return RawDataText::Examine(text, fliers, last);
}

QStringList ValuesIn(const QString& text) {
  const RawDataText::Examination found = RawDataText::Examine(text);
  if (found.notANumber.number + found.cells.number + found.unclear.number > 0) return {};
  return TAVELDataStringFunctions::ConvertStringDelimiter(false, RawDataText::WithEndedLines(text))
      .split(u',', Qt::SkipEmptyParts);
}

std::unique_ptr<CData> Preview(const CData& data, const QString& text) {
  const QStringList values = ValuesIn(text);
  if (values.isEmpty()) return nullptr;
  auto with = std::make_unique<CData>(data);
  QString all = data.DelimitedInputString();
  if (!all.trimmed().isEmpty() && !all.endsWith(u',')) all += u',';
  with->SetDelimitedInputString(all + values.join(u',') + u',');
  return QCGlobalFunctions::CalculateStatistics(*with) ? std::move(with) : nullptr;
}

int LastViolation(const CData& data) {
  const qint16 rule = data.RuleViolation();
  if (rule < 1 || rule > 4) return 0;
  const auto& points = data.ViolatingPoints()[static_cast<size_t>(rule - 1)];
  return points.empty() ? 0 : points.back();
}

}  // namespace AddedSamples
