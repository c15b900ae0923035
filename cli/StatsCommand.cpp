// The command stats: the engine on values from standard input, every digit of its results as JSON.
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>

#include "cli/Arguments.h"
#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/SharedOptions.h"
#include "data/Json.h"
#include "data/Statistics.h"
#include "engine/Engine.h"
#include "platform/error/Error.h"
#include "platform/language/Conversions.h"
#include "texts/CommandWords.h"

using namespace Qt::StringLiterals;

namespace Commands {

namespace {

using namespace SharedOptions;

const Option start = Option::Whole(u"start"_s, Words::Command::startOption(), 0, engine::maximumSamples);
const Option stop = Option::Whole(u"stop"_s, Words::Command::stopOption(), 0, engine::maximumSamples);
const Option limitsKept =
    Option::Text(u"limits"_s, u"XUCL,XLCL,XMEAN,RUCL,RLCL,RMEAN"_s, Words::Command::limitsOption());
const Option precision =
    Option::Whole(u"precision"_s, Words::Command::precisionOption(), 0, engine::maximumPrecision);
const Option reverse = Option::Flag(u"reverse"_s, Words::Command::reverseOption());

void ReadSpecLimits(const Arguments& arguments, engine::Inputs& inputs) {
  const auto upper = arguments.Number(usl);
  const auto lower = arguments.Number(lsl);
  if (upper.has_value() != lower.has_value()) throw InputError(Words::Command::bothSpecLimits());
  if (!upper) return;
  CheckSpecLimits(arguments);
  inputs.upperSpecLimit = *upper;
  inputs.lowerSpecLimit = *lower;
}

void ReadControlLimits(const Arguments& arguments, engine::Inputs& inputs) {
  if (!arguments.Has(limitsKept)) return;
  const QStringList words = arguments.Text(limitsKept).split(u',');
  if (words.size() != std::ssize(engine::controlLimitFields)) {
    throw InputError(Words::Command::sixLimits(limitsKept.value));
  }
  auto word = words.begin();
  for (const auto& [limit, name] : engine::controlLimitFields) {
    if (!Conversions::IsNumeric(*word)) throw InputError(Words::Command::limitIsNoNumber(*word));
    inputs.limits.*limit = Conversions::CDbl(*word++);
  }
}

engine::Inputs InputsOf(const Arguments& arguments) {
  engine::Inputs inputs;
  ReadSpecLimits(arguments, inputs);
  ReadControlLimits(arguments, inputs);
  inputs.subGroupSize = arguments.Whole(subGroup);
  inputs.sensitivity = engine::Sensitivity{arguments.Choice(sensitivity)};
  inputs.detectionPeriod = engine::DetectionPeriod{arguments.Choice(period)};
  inputs.dataStartPoint = arguments.Whole(start);
  inputs.dataStopPoint = arguments.Whole(stop);
  if (arguments.Has(precision)) inputs.precisionValue = arguments.Whole(precision);
  inputs.reverseDataString = arguments.Has(reverse);
  return inputs;
}

// Inputs and results under the names that a data set gives them.
CData DataSetOf(const engine::Inputs& inputs, const engine::Results& results) {
  CData data;
  data.SetUpperSpecLimit(inputs.upperSpecLimit);
  data.SetLowerSpecLimit(inputs.lowerSpecLimit);
  data.SetSubGroupSize(static_cast<qint16>(inputs.subGroupSize));
  data.SetSensitivityValue(static_cast<qint32>(inputs.sensitivity));
  data.SetDetectionPeriod(static_cast<qint32>(inputs.detectionPeriod));
  data.SetDataStartPoint(static_cast<qint16>(inputs.dataStartPoint));
  data.SetDataStopPoint(static_cast<qint16>(inputs.dataStopPoint));
  data.SetPrecisionValue(static_cast<qint16>(inputs.precisionValue));
  data.SetReverseDataString(inputs.reverseDataString);
  data.SetDelimitedInputString(QString::fromUtf8(inputs.delimitedInputString.data(),
                                                 static_cast<qsizetype>(inputs.delimitedInputString.size())));
  QCGlobalFunctions::StoreResults(results, data);
  return data;
}

// What cannot be said is null.
void AddCapability(const engine::Capability& capability, QJsonObject& object) {
  const auto add = [&](const QString& name, const auto& value) {
    object[name] = value ? QJsonValue(*value) : QJsonValue();
  };
  object[u"SigmaWithin"_s] = capability.sigmaWithin;
  object[u"SigmaOverall"_s] = capability.sigmaOverall;
  add(u"Cp"_s, capability.cp);
  add(u"Pp"_s, capability.pp);
  add(u"Ppk"_s, capability.ppk);
  add(u"SamplesOutside"_s, capability.samplesOutside);
  add(u"ExpectedOutside"_s, capability.ExpectedOutside());
}

int RunStats(const Arguments& arguments) {
  engine::Inputs inputs = InputsOf(arguments);
  const QStringList values =
      WrittenNumbers::ReadList(QString::fromUtf8(Console::ReadInput()), Notation(arguments));
  const QByteArray text = values.join(u',').toUtf8();
  inputs.delimitedInputString = std::string_view(text.constData(), static_cast<std::size_t>(text.size()));
  engine::Engine engine;
  engine::Results results;
  bool succeeded = engine.Read(inputs.delimitedInputString, inputs.stringDelimiter, inputs.reverseDataString);
  if (succeeded) {
    if (!arguments.Has(precision)) {
      const int own = std::max({engine.SampleDecimals(), engine::DecimalsRead(inputs.upperSpecLimit),
                                engine::DecimalsRead(inputs.lowerSpecLimit)});
      inputs.precisionValue = engine::DecimalsToShow(own);
      if (own > inputs.precisionValue)
        Console::Warn(Words::Command::moreDecimals(own, inputs.precisionValue));
    }
    succeeded = engine.Calculate(inputs, results);
  }
  if (!succeeded) throw InputError(QString::fromStdString(engine.LastError()));
  const CData data = DataSetOf(inputs, results);
  QJsonObject object = Json::StoredProperties(data);
  QJsonArray rangesOutside;
  for (const qint16 point : data.RangesOutside()) rangesOutside.append(point);
  object[u"RangesOutside"_s] = rangesOutside;
  AddCapability(data.Capability(), object);
  QJsonObject violating;
  for (std::size_t rule = 0; rule < data.ViolatingPoints().size(); ++rule) {
    QJsonArray points;
    for (const qint16 point : data.ViolatingPoints()[rule]) points.append(point);
    violating[QString::number(rule + 1)] = points;
  }
  object[u"ViolatingPoints"_s] = violating;
  Console::Print(QString::fromUtf8(QJsonDocument(object).toJson()));
  return 0;
}

}  // namespace

const Command& Stats() {
  static const Command command = {.name = u"stats"_s,
                                  .purpose = Words::Command::statsPurpose(),
                                  .operands = {},
                                  .options = {subGroup, usl, lsl, sensitivity, period, start, stop,
                                              limitsKept, precision, reverse, decimal, separator},
                                  .details = {},
                                  .run = RunStats};
  return command;
}

}  // namespace Commands
