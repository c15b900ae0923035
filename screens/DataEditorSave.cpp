#include "screens/DataEditorSave.h"

#include <algorithm>
#include <cmath>

#include "charts/LimitsOrigin.h"
#include "core/CreateStatistics.h"
#include "core/DataObjectFunctions.h"
#include "core/GlobalFunctions.h"
#include "core/Globals.h"
#include "core/Messages.h"
#include "core/Trap.h"
#include "data/RawDataText.h"
#include "platform/language/Conversions.h"
#include "screens/SaveQuestions.h"
#include "screens/SharedSave.h"
#include "texts/Texts.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;
using MessageBox::Buttons;
using MessageBox::Icon;

namespace {

// A box that need not be filled in: nothing reads as 0.
double OptionalNumber(const QString& caption, const QString& text) {
  if (IsBlank(text)) return 0;
  if (Conversions::IsNumeric(text)) return Conversions::CDbl(text);
  const auto& refusal =
      text.contains(u',') ? Words::Editor::isNotANumberWithComma : Words::Editor::isNotANumber;
  throw Error(refusal(caption, text.trimmed()));
}

}  // namespace

DataEditorSave::DataEditorSave(const EditorFields& fields, CDataPtr edited, const QStringList& unitList,
                               Trace::Origins lines)
    : fields_(fields),
      edited_(std::move(edited)),
      shown_(edited_ ? EditorFields::Of(*edited_) : EditorFields()),
      unitList_(unitList),
      data_(edited_ ? std::make_shared<CData>(*edited_) : std::make_shared<CData>()),
      lines_(std::move(lines)) {
  data_->SetFollowsItsDecimals(true);
}

bool DataEditorSave::SaveSelect() {
  try {
    if (!CheckRawData()) return false;
    const QString values = PrepareRawData();
    if (values.isEmpty()) return false;
    data_->SetDataChanged(true);
    data_->SetDelimitedInputString(values);
    data_->SetSampleOrigins(samples_);
    if (!edited_) data_->SetDescription(fields_.description.trimmed().toUpper());
    return ConfirmExcess() && FillDataObject() && QCGlobalFunctions::CreateStatistics(*data_) &&
           ConfirmKeptDigits() && ConfirmStrangeLimits() && ConfirmNewBase() && StoreData();
  } catch (const std::exception& error) {
    ShowSystemMessage(LoadResText(u"Error attempting to save data: ;170") + u"\r\n"_s + ErrorText(error),
                      Icon::Critical);
    return false;
  }
}

bool DataEditorSave::Refuse(const QString& message, const QString& control, Icon icon) {
  controlAtFault_ = control;
  ShowSystemMessage(message, icon);
  return false;
}

QString DataEditorSave::StopWith(const QString& reason, const QString& control) {
  controlAtFault_ = control;
  reason_ = reason;
  return {};
}

qint16 DataEditorSave::MaxSamples() const {
  const double number = OptionalNumber(Words::Editor::maxSamples(), fields_.maxSamples);
  if (std::abs(number) > RawDataText::mostValues)
    throw Error(Words::Editor::tooManySamples(RawDataText::mostValues));
  return Conversions::CInt(number);
}

// The box shows what the data set has; its further digits are not the user's to lose.
bool DataEditorSave::IsAsShown(const NumberBox& box) const {
  return edited_ && fields_.*box.text == shown_.*box.text;
}

double DataEditorSave::NumberIn(QString EditorFields::*text) const {
  const auto box = std::ranges::find(NumberBoxes(), text, &NumberBox::text);
  return IsAsShown(*box) ? ((*edited_).*box->read)() : OptionalNumber(box->Caption(), fields_.*text);
}

void DataEditorSave::TakeFlierLimits() {
  double high = NumberIn(&EditorFields::hiFlier);
  double low = NumberIn(&EditorFields::lowFlier);
  if (high == 0 && low == 0) {
    const auto beyond =
        RawDataText::FliersBeyond(Conversions::CDbl(fields_.lsl), Conversions::CDbl(fields_.usl));
    high = beyond.high;
    low = beyond.low;
  }
  if (!std::isfinite(high) || !std::isfinite(low)) throw Error(Words::Editor::specLimitsTooFarApart());
  data_->SetHiFlier(high);
  data_->SetLoFlier(low);
}

bool DataEditorSave::ValidateFields() {
  if (const auto unfilled = fields_.Unfilled()) {
    StopWith(unfilled->text, unfilled->control);
    MessageBox::Show(
        {LoadResText(
             u"The required fields for statistical calculations are not filled in correctly. Any area "
             u"with an aterisk must be entered.;177"),
         Words::error(), Icon::Exclamation, Buttons::Ok});
    return false;
  }
  if (RawDataText::SubGroupSize(fields_.subGroup) == 0)
    return Refuse(
        LoadResText(u"The sub group size must be a value greater than zero and cannot exceed 20.;173"),
        u"comboSubGroup"_s);
  TakeFlierLimits();
  const NumberBox* missing = fields_.MissingControlLimit();
  if (!fields_.calculateLimits && missing)
    return Refuse(
        LoadResText(u"Upper and lower control limits must be entered if the checkbox labeled 'Calculate "
                    u"Limits On Save' is left unchecked.;174") +
            (missing->text == &EditorFields::rLCL && !IsBlank(fields_.rLCL)
                 ? u"\r\n\r\n"_s + Words::Saving::lowerRangeLimitOfZero()
                 : QString()),
        missing->ControlName());
  const double nominal = Conversions::CDbl(fields_.nominal);
  if (nominal > Conversions::CDbl(fields_.usl) || nominal < Conversions::CDbl(fields_.lsl))
    return Refuse(LoadResText(u"The nominal value cannot exceed the spec limits.;175"), u"txtNominal"_s);
  if (!fields_.useAllSamples && !Conversions::IsNumeric(fields_.maxSamples))
    return Refuse(
        LoadResText(u"The value entered for the maximum number of samples is not a numeric value.;176"),
        u"txtMaxSamples"_s);
  return true;
}

bool DataEditorSave::FillDataObject() {
  try {
    for (const NumberBox& box : NumberBoxes())
      if (box.group == NumberBox::SpecLimits && !IsAsShown(box))
        (*data_.*box.store)(Conversions::CDbl(fields_.*box.text));
    data_->SetSubGroupSize(RawDataText::SubGroupSize(fields_.subGroup));
    data_->SetDataStartPoint(0);
    data_->SetDataStopPoint(fields_.useAllSamples ? validSamples_ : MaxSamples());
    if (fields_.sensitivity >= 0) data_->SetSensitivityValue(fields_.sensitivity);
    if (fields_.calculateLimits || !edited_)
      QCGlobalFunctions::ClearControlLimits(*data_);
    else
      TakeControlLimits();
    data_->SetDetectionPeriod(fields_.longTermDetection ? 1 : 0);
    data_->SetUnitOfMeasurement(SaveQuestions::Unit(fields_.units, unitList_, edited_.get()));
    return true;
  } catch (const std::exception& error) {
    return Refuse(LoadResText(u"Failed to setup data object with error: ;178") + ErrorText(error), {},
                  Icon::Critical);
  }
}

void DataEditorSave::TakeControlLimits() {
  for (const NumberBox& box : NumberBoxes())
    if (box.IsControlLimit() && !IsAsShown(box)) (*data_.*box.store)(NumberIn(box.text));
}

// A data set has the decimals that it shows, and a number fifteen digits.
bool DataEditorSave::ConfirmKeptDigits() {
  if (data_->UpperSpecLimit() <= data_->LowerSpecLimit())
    return Refuse(Words::Editor::specLimitsAreOne(fields_.lsl, fields_.usl, data_->PrecisionValue()),
                  u"txtUSL"_s);
  QStringList changed;
  QString first;
  for (const NumberBox& box : NumberBoxes()) {
    const bool isCalculated = box.IsControlLimit() && (fields_.calculateLimits || !edited_);
    const double typed = isCalculated || IsAsShown(box) ? 0 : NumberIn(box.text);
    const double kept = (*data_.*box.read)();
    const QString text = (fields_.*box.text).trimmed();
    if (typed == 0 || SaveQuestions::IsKeptAsTyped(text, kept)) continue;
    changed << Words::Saving::keptAs(box.Caption(), text, Conversions::CStr(kept));
    if (first.isEmpty()) first = box.ControlName();
  }
  const QString question = changed.join(u"\r\n"_s) + u"\r\n\r\n"_s + Words::Saving::saveAllTheSame();
  if (changed.isEmpty() || ConfirmedInSystemMessage(question, Icon::Exclamation)) return true;
  controlAtFault_ = first;
  return false;
}

bool DataEditorSave::ConfirmStrangeLimits() {
  const bool keepsLimits = edited_ && !fields_.calculateLimits;
  const QString question = SaveQuestions::StrangeLimits(*data_, keepsLimits, edited_.get());
  if (question.isEmpty() || ConfirmedInSystemMessage(question, Icon::Exclamation)) return true;
  controlAtFault_ = keepsLimits ? u"txtXUCL"_s : u"txtUSL"_s;
  return false;
}

// Limits that rest on chosen points are not given up unasked.
bool DataEditorSave::ConfirmNewBase() {
  const auto origin = edited_ && fields_.calculateLimits ? KnownOrigin(*edited_) : std::nullopt;
  if (!origin || origin->kind != LimitsOrigin::Points) return true;
  if (ConfirmedInSystemMessage(Words::Saving::limitsLeaveTheirPoints(origin->first, origin->last)))
    return true;
  controlAtFault_ = u"checkCalculateControlLimitsOnSave"_s;
  return false;
}

bool DataEditorSave::StoreData() {
  if (!edited_ && !DescriptionIsFree()) return false;
  const CData before = edited_ ? *edited_ : CData();
  const SharedSave::Result result = SharedSave::Save(data_);
  if (result.outcome == SharedSave::Outcome::NotSaved) return false;
  takenIn_ = result.takenIn;
  const bool isShown = PutIntoSystem();
  if (result.outcome == SharedSave::Outcome::TookTheirs) return true;
  if (isShown)
    ShowSaved(edited_ ? &before : nullptr);
  else
    ShowSystemMessage(
        LoadResText(u"Data was saved to the database, but the application could not be updated. Restart "
                    u"the application to load the modified data.;205") +
            (edited_ ? QString() : u"\r\n\r\n"_s + Words::Saving::isReadAgain()),
        Icon::Critical);
  return true;
}

void DataEditorSave::ShowSaved(const CData* before) {
  QString message = LoadResText(u"All data successfully saved.;204");
  const QString replaced = before ? SaveQuestions::ReplacedLimits(*before, *data_) : QString();
  if (!replaced.isEmpty()) message += u"\r\n\r\n"_s + replaced;
  ShowSystemMessage(message, Icon::Information);
}

bool DataEditorSave::DescriptionIsFree() {
  bool failed = false;
  const bool exists =
      QCGlobalFunctions::IsDuplicateName(u"StatData"_s, u"Description"_s, data_->Description(), &failed);
  // A test that failed has been reported; what it would have found is not known.
  if (failed) controlAtFault_ = u"txtDescription"_s;
  if (failed) return false;
  // The table's own comparison knows the case of plain letters only.
  if (!exists && !CurrentLibrary()->Contains(data_->Description())) return true;
  return Refuse(
      LoadResText(u"The file description entered already exists. Please select another description or "
                  u"CANCEL.;172"),
      u"txtDescription"_s);
}

bool DataEditorSave::PutIntoSystem() {
  if (edited_) {
    *edited_ = *data_;
    return DataObjectFunctions::ModifyDataObjectInSystem(edited_);
  }
  // Without its ID the new data set can be shown, but neither charted nor edited until the next load.
  return DataObjectFunctions::AddDataObjectToSystem(data_) && data_->ID() != 0;
}
