// The raw data of a save: what is handed over of them, which samples they are, and what is asked and dropped.
#include "core/Globals.h"
#include "core/Messages.h"
#include "data/RawDataLines.h"
#include "data/RawDataReadings.h"
#include "data/RawDataText.h"
#include "data/TAVELDataStringFunctions.h"
#include "screens/DataEditorSave.h"
#include "screens/SaveQuestions.h"
#include "texts/Texts.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;
using MessageBox::Answer;
using MessageBox::Buttons;
using MessageBox::Icon;

namespace {

constexpr qint16 fewestSamples = 8;

// A line that becomes so many is what it was where it stays one. Where it is not known what one was, it is
// not known of any.
void AddLine(Trace::Origins& to, const Trace::Origins& lines, qsizetype number, qsizetype count) {
  if (number > std::ssize(lines)) return;
  const qint32 was = lines[static_cast<std::size_t>(number - 1)];
  to.insert(to.end(), static_cast<std::size_t>(count), count == 1 ? was : Trace::isNew);
}

QString HandedOver(const QString& rawData) {
  return TAVELDataStringFunctions::ConvertStringDelimiter(false, RawDataText::WithEndedLines(rawData));
}

qint16 CountIn(const QString& rawData) {
  return TAVELDataStringFunctions::ValidateDelimitedDataString(HandedOver(rawData));
}

}  // namespace

bool DataEditorSave::CheckRawData() {
  const QString box = u"txtRawData"_s;
  if (IsBlank(fields_.rawData)) return Refuse(LoadResText(u"No data to process;166"), box, Icon::Critical);
  if (HandedOver(fields_.rawData).isEmpty())
    return Refuse(LoadResText(u"Error formatting raw data;167"), box, Icon::Critical);
  if (!ValidateFields() || !SettleCommas()) return false;
  validSamples_ = CountIn(fields_.rawData);
  if (validSamples_ >= fewestSamples) return true;
  const RawDataText::Examination found = RawDataText::Examine(fields_.rawData);
  return Refuse(LoadResText(u"Data values could not be validated. Ensure at least ;168") +
                    QString::number(fewestSamples) +
                    LoadResText(u" data points exist and no non-numeric values have been entered.;169") +
                    (found.IsUnclear() ? u"\r\n\r\n"_s + found.Fault() : QString()),
                box);
}

// A comma that makes one value or two has only the user's meaning. What no answer makes fit to be saved is
// refused without the question.
bool DataEditorSave::SettleCommas() {
  const auto doubt = RawDataReadings::DoubtfulComma(fields_.rawData);
  const auto canBeSaved = [this](bool asOneValue) {
    return CountIn(RawDataReadings::Settled(fields_.rawData, asOneValue)) >= fewestSamples;
  };
  if (!doubt || (!canBeSaved(true) && !canBeSaved(false))) return true;
  const Answer answer =
      ShowSystemMessage(SaveQuestions::DoubtfulComma(*doubt), Icon::Question, Buttons::YesNoCancel);
  controlAtFault_ = u"txtRawData"_s;
  if (answer != Answer::Yes && answer != Answer::No) return false;
  const QString text = fields_.rawData;
  fields_.rawData = RawDataReadings::Settled(text, answer == Answer::Yes);
  Trace::Origins lines;
  RawDataLines::ForEachLine(text, [&](qsizetype number, QStringView line) {
    const auto count = RawDataReadings::Settled(line.toString(), answer == Answer::Yes).count(u'\n') + 1;
    AddLine(lines, lines_, number, count);
  });
  lines_ = lines;
  return true;
}

// Of the values that are handed over.
Trace::Origins DataEditorSave::HandedOverSamples() const {
  Trace::Origins samples;
  RawDataLines::ForEachLine(fields_.rawData, [&](qsizetype number, QStringView line) {
    AddLine(samples, lines_, number, line.count(u',') + 1);
  });
  return samples;
}

// Of values only some stay.
void DataEditorSave::Keep(QString& values, const QString& kept) {
  if (!samples_.empty())
    samples_ =
        Trace::Through(samples_, Trace::ByDifference(Trace::SamplesIn(values), Trace::SamplesIn(kept)));
  values = kept;
}

bool DataEditorSave::ConfirmFliers(const QString& values) {
  const QString question = SaveQuestions::Fliers(values, *data_, RawDataText::SubGroupSize(fields_.subGroup));
  if (question.isEmpty() || ConfirmedInSystemMessage(question)) return true;
  controlAtFault_ = u"checkDiscardFliers"_s;
  return false;
}

QString DataEditorSave::PrepareRawData() {
  QString values = HandedOver(fields_.rawData);
  samples_ = HandedOverSamples();
  const QStringList after = Trace::SamplesIn(values);
  if (std::ssize(samples_) != after.size()) samples_.clear();
  if (edited_ && !samples_.empty())
    samples_ = Trace::WithReturned(samples_, Trace::SamplesIn(edited_->DelimitedInputString()), after);
  if (fields_.discardFliers) {
    const QString kept =
        TAVELDataStringFunctions::RemoveFliersFromDataString(values, data_->LoFlier(), data_->HiFlier());
    if (kept.isEmpty()) return StopWith(Words::Editor::allAreFliers(), u"checkDiscardFliers"_s);
    if (!ConfirmFliers(values)) return {};
    Keep(values, kept);
  }
  beforeCut_ = values;
  // The rule goes by the count before the removal, as users know it.
  if (validSamples_ < fewestSamples)
    ShowRemaining(TAVELDataStringFunctions::ValidateDelimitedDataString(values));
  else if (!fields_.useAllSamples && MaxSamples() < validSamples_)
    Keep(values, CutToMaxSamples(values));
  return values;
}

void DataEditorSave::ShowRemaining(qint16 remaining) {
  ShowSystemMessage(QString::number(validSamples_ - remaining) +
                        LoadResText(u" samples have been discarded because they exceed flier limits. ;160") +
                        LoadResText(u"Only ;161") + QString::number(remaining) +
                        LoadResText(u" samples are remaining.;162") +
                        LoadResText(u"There must be at least ;163") + QString::number(fewestSamples) +
                        LoadResText(u" number of valid data samples to process;164"),
                    Icon::Exclamation);
}

QString DataEditorSave::CutToMaxSamples(const QString& values) {
  // With the fliers gone there may be fewer than are to be kept; the routine answers nothing at all then.
  if (values.count(u',') <= MaxSamples()) return values;
  const QString kept = TAVELDataStringFunctions::DiscardExcessSamples(values, MaxSamples());
  return kept.isEmpty() ? StopWith(Words::Editor::noSamplesKept(), u"txtMaxSamples"_s) : kept;
}

bool DataEditorSave::ConfirmExcess() {
  if (fields_.useAllSamples) return true;
  const int excess = validSamples_ - MaxSamples();
  if (excess <= 0) return true;
  return ConfirmedInSystemMessage(QString::number(excess) +
                                  LoadResText(u" samples will be discarded upon save. Continue?;171") +
                                  u"\r\n\r\n"_s + SaveQuestions::Excess(beforeCut_, MaxSamples()));
}
