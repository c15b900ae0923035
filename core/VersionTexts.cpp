#include "core/VersionTexts.h"

#include <algorithm>
#include <map>

#include "library/Merge.h"
#include "library/Tables.h"
#include "platform/language/Conversions.h"
#include "texts/DetectionRules.h"
#include "texts/SharingWords.h"
#include "texts/Texts.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype mostSamplesNamed = 8;

QStringList SamplesOf(const CData& data) {
  QStringList samples = data.DelimitedInputString().split(u',');
  for (QString& sample : samples) sample = sample.trimmed();
  if (samples.last().isEmpty()) samples.removeLast();
  return samples;
}

// How many there are, and those that the other version has not in their places.
QString SamplesText(const QStringList& samples, const QStringList& others) {
  QStringList lines{Words::Sharing::samples(samples.size())};
  qsizetype different = 0;
  for (qsizetype i = 0; i < samples.size(); ++i) {
    if (i < others.size() && samples[i] == others[i]) continue;
    if (++different <= mostSamplesNamed) lines << Words::Sharing::sample(i + 1, samples[i]);
  }
  if (different > mostSamplesNamed) lines << Words::Sharing::andMore(different - mostSamplesNamed);
  return lines.join(u'\n');
}

// Of a column that is one of several in its unit; empty for one that stands alone.
QString NameOf(const QString& column) {
  static const std::map<QString, Text<>> names{
      {u"NominalSpecLimit"_s, Words::Figure::nominal}, {u"UpperSpecLimit"_s, Words::Figure::usl},
      {u"LowerSpecLimit"_s, Words::Figure::lsl},       {u"HiFlier"_s, Words::Sharing::highFlier},
      {u"LoFlier"_s, Words::Sharing::lowFlier},        {u"XBarUCL"_s, Words::Sharing::xBarUCL},
      {u"XBarLCL"_s, Words::Sharing::xBarLCL},         {u"XBarMean"_s, Words::Sharing::xBarMean},
      {u"RBarUCL"_s, Words::Sharing::rangeUCL},        {u"RBarLCL"_s, Words::Sharing::rangeLCL},
      {u"RBarMean"_s, Words::Sharing::rangeMean},      {u"SubGroupSize"_s, Words::Figure::subgroupSize}};
  const auto found = names.find(column);
  return found == names.end() ? QString() : found->second();
}

QString ValueText(const Column& column, const CData& data) {
  if (column.unit == Column::Unit::Sensitivity)
    return DetectionRules::SensitivityText(data.SensitivityValue());
  if (column.unit == Column::Unit::DetectionPeriod)
    return data.DetectionPeriod() == 1 ? LoadResText(u"Long term detection;154")
                                       : LoadResText(u"Short term detection;155");
  const QVariant value = column.write(data);
  const QString text =
      column.kind == Column::Kind::Real ? Conversions::CStr(value.toDouble()) : value.toString();
  const QString name = NameOf(column.name);
  return name.isEmpty() ? text : Words::Sharing::figure(name, text);
}

// The fields of a unit in which the two differ, a line for each.
VersionText FieldsText(Column::Unit unit, const CData& mine, const CData& theirs) {
  QStringList mineLines, theirLines;
  for (const Column& column : Tables::StatData().columns) {
    if (column.unit != unit || column.write(mine) == column.write(theirs)) continue;
    mineLines << ValueText(column, mine);
    theirLines << ValueText(column, theirs);
  }
  return {Merge::NameOf(unit), mineLines.join(u'\n'), theirLines.join(u'\n')};
}

}  // namespace

std::vector<VersionText> VersionTexts(const CData& mine, const CData& theirs, const QStringList& subjects) {
  std::vector<VersionText> texts;
  for (const Column& column : Tables::StatData().columns) {
    const QString subject = Merge::NameOf(column.unit);
    const bool isListed = std::ranges::find(texts, subject, &VersionText::subject) != texts.end();
    if (isListed || !subjects.contains(subject)) continue;
    if (column.unit == Column::Unit::Values)
      texts.push_back({subject, SamplesText(SamplesOf(mine), SamplesOf(theirs)),
                       SamplesText(SamplesOf(theirs), SamplesOf(mine))});
    else
      texts.push_back(FieldsText(column.unit, mine, theirs));
  }
  return texts;
}
