#include "screens/EditorFields.h"

#include <algorithm>
#include <cmath>

#include "data/MathFunctions.h"
#include "data/TAVELDataStringFunctions.h"
#include "platform/language/Conversions.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qint16 fewestDecimals = 4;

constexpr NumberBox boxes[] = {
    {u"txtUSL", Words::Editor::upperLimit, NumberBox::SpecLimits, true, &EditorFields::usl,
     &CData::UpperSpecLimit, &CData::SetUpperSpecLimit},
    {u"txtNominal", Words::Editor::nominal, NumberBox::SpecLimits, true, &EditorFields::nominal,
     &CData::NominalSpecLimit, &CData::SetNominalSpecLimit},
    {u"txtLSL", Words::Editor::lowerLimit, NumberBox::SpecLimits, true, &EditorFields::lsl,
     &CData::LowerSpecLimit, &CData::SetLowerSpecLimit},
    {u"txtHiFlier", Words::Editor::highFlier, NumberBox::Fliers, false, &EditorFields::hiFlier,
     &CData::HiFlier, &CData::SetHiFlier},
    {u"txtLowFlier", Words::Editor::lowFlier, NumberBox::Fliers, false, &EditorFields::lowFlier,
     &CData::LoFlier, &CData::SetLoFlier},
    {u"txtXUCL", Words::Editor::xBarUCL, NumberBox::XBarLimits, false, &EditorFields::xUCL, &CData::XBarUCL,
     &CData::SetXBarUCL},
    {u"txtXMean", Words::Editor::xBarMean, NumberBox::XBarLimits, false, &EditorFields::xMean,
     &CData::XBarMean, &CData::SetXBarMean},
    {u"txtXLCL", Words::Editor::xBarLCL, NumberBox::XBarLimits, false, &EditorFields::xLCL, &CData::XBarLCL,
     &CData::SetXBarLCL},
    {u"txtRUCL", Words::Editor::rangeUCL, NumberBox::RangeLimits, false, &EditorFields::rUCL, &CData::RBarUCL,
     &CData::SetRBarUCL},
    {u"txtRMean", Words::Editor::rangeMean, NumberBox::RangeLimits, false, &EditorFields::rMean,
     &CData::RBarMean, &CData::SetRBarMean},
    {u"txtRLCL", Words::Editor::rangeLCL, NumberBox::RangeLimits, false, &EditorFields::rLCL, &CData::RBarLCL,
     &CData::SetRBarLCL},
};

// The pattern "#.0000": four decimals or the data set's own, and no zero before the point.
QString LimitText(double value, qint16 dataSetsDecimals) {
  const qint16 decimals = std::max(fewestDecimals, dataSetsDecimals);
  const double rounded = MathFunctions::FormatDouble(value, decimals);
  QString text = QString::number(std::abs(rounded), 'f', decimals);
  if (text.startsWith(u"0."_s)) text.remove(0, 1);
  return rounded < 0 ? u'-' + text : text;
}

// The centre lines can do without a number.
bool MustBeEntered(const NumberBox& box) {
  return box.IsControlLimit() && box.text != &EditorFields::xMean && box.text != &EditorFields::rMean;
}

}  // namespace

std::span<const NumberBox> NumberBoxes() { return boxes; }

EditorFields EditorFields::Blank() {
  const CData data;
  EditorFields fields;
  fields.subGroup = QString::number(data.SubGroupSize());
  fields.sensitivity = data.SensitivityValue();
  fields.longTermDetection = data.DetectionPeriod() == 1;
  return fields;
}

EditorFields EditorFields::Of(const CData& data) {
  EditorFields fields;
  fields.description = data.Description();
  fields.units = data.UnitOfMeasurement();
  for (const NumberBox& box : boxes) fields.*box.text = LimitText((data.*box.read)(), data.PrecisionValue());
  fields.subGroup = QString::number(data.SubGroupSize());
  fields.rawData = TAVELDataStringFunctions::ConvertStringDelimiter(true, data.DelimitedInputString());
  fields.sensitivity = data.SensitivityValue();
  fields.longTermDetection = data.DetectionPeriod() == 1;
  // Limits that could not be kept as they are would only stop the save.
  fields.calculateLimits = fields.MissingControlLimit() != nullptr;
  return fields;
}

QString EditorFields::Hint() const {
  const auto check = [](const QString& caption, const QString& text) -> QString {
    if (text.trimmed().isEmpty() || Conversions::IsNumeric(text)) return {};
    const QString withPoint = QString(text).replace(u',', u'.').trimmed();
    return Conversions::IsNumeric(withPoint) ? Words::Editor::writeThePoint(caption, withPoint)
                                             : Words::Editor::notANumber(caption);
  };
  for (const NumberBox& box : boxes)
    if (const QString hint = check(box.Caption(), this->*box.text); !hint.isEmpty()) return hint;
  if (const QString hint = useAllSamples ? QString() : check(Words::Editor::maxSamples(), maxSamples);
      !hint.isEmpty())
    return hint;
  for (const NumberBox& box : boxes)
    if (RawDataText::DecimalsOf(this->*box.text) > RawDataText::mostDecimals)
      return Words::Editor::tooFine(box.Caption(), RawDataText::mostDecimals);
  const NumberBox* missing = calculateLimits ? nullptr : MissingControlLimit();
  if (!missing) return {};
  return Words::Editor::limitMissing(missing->Caption());
}

std::optional<EditorFields::Fault> EditorFields::Unfilled() const {
  if (IsBlank(description)) return Fault{u"txtDescription"_s, Words::Editor::descriptionToFillIn()};
  if (IsBlank(units)) return Fault{u"comboUnits"_s, Words::Editor::unitToChoose()};
  for (const NumberBox& box : boxes)
    if (box.isRequired && !Conversions::IsNumeric(this->*box.text))
      return Fault{box.ControlName(),
                   IsBlank(this->*box.text) ? Words::Editor::numberToFillIn(box.Caption()) : Hint()};
  if (IsBlank(subGroup)) return Fault{u"comboSubGroup"_s, Words::Editor::subGroupToChoose()};
  if (Conversions::CDbl(lsl) < Conversions::CDbl(usl)) return {};
  return Fault{u"txtUSL"_s, Words::Editor::specLimitsCross()};
}

std::optional<RawDataText::FlierLimits> EditorFields::Fliers() const {
  const auto number = [](const QString& text) -> std::optional<double> {
    if (text.trimmed().isEmpty()) return 0;
    if (!Conversions::IsNumeric(text)) return std::nullopt;
    return Conversions::CDbl(text);
  };
  const auto low = number(lowFlier), high = number(hiFlier);
  if (!low || !high) return std::nullopt;
  if (*low != 0 || *high != 0) return RawDataText::FlierLimits{*low, *high};
  const auto lower = number(lsl), upper = number(usl);
  if (!lower || !upper || *lower >= *upper) return std::nullopt;
  return RawDataText::FliersBeyond(*lower, *upper);
}

const NumberBox* EditorFields::MissingControlLimit() const {
  for (const NumberBox& box : boxes) {
    const QString& entered = this->*box.text;
    if (MustBeEntered(box) && (!Conversions::IsNumeric(entered) || Conversions::CDbl(entered) == 0))
      return &box;
  }
  return nullptr;
}
