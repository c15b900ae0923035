// The commands that make and change libraries: new, import, append, convert.
#include <QDateTime>

#include "cli/Arguments.h"
#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/CsvColumn.h"
#include "cli/SharedOptions.h"
#include "data/MathFunctions.h"
#include "data/RawDataText.h"
#include "data/Statistics.h"
#include "data/WrittenTimes.h"
#include "engine/Engine.h"
#include "library/AccessImport.h"
#include "library/Library.h"
#include "library/Tables.h"
#include "platform/ado/ServerAddress.h"
#include "platform/error/Error.h"
#include "platform/language/Conversions.h"
#include "texts/CommandWords.h"
#include "texts/CsvWords.h"

using namespace Qt::StringLiterals;

namespace Commands {

namespace {

using namespace SharedOptions;

const Option nominal = Option::Number(u"nominal"_s, Words::Command::nominalOption()).Required();
const Option unit = Option::Text(u"unit"_s, u"U"_s, Words::Command::unitOption());
const Option recalculate = Option::Flag(u"recalculate"_s, Words::Command::recalculateOption());
const Option heading = Option::Flag(u"heading"_s, Words::Command::headingOption());
const Option noHeading = Option::Flag(u"no-heading"_s, Words::Command::noHeadingOption());
const Option column = Option::Text(u"column"_s, u"NAME|N"_s, Words::Command::columnOption());

const Option timeColumn = Option::Text(u"time-column"_s, u"NAME|N"_s, Words::Command::timeColumnOption());
const Option lotColumn = Option::Text(u"lot-column"_s, u"NAME|N"_s, Words::Command::lotColumnOption());
const Option takenAt = Option::Text(u"time"_s, u"TIME"_s, Words::Command::timeOption());
const Option lot = Option::Text(u"lot"_s, u"LOT"_s, Words::Command::lotOption());

// The stored form: each value followed by a comma.
QString StoredForm(const std::vector<CsvSample>& samples) {
  QString text;
  for (const CsvSample& sample : samples) text += sample.value + u',';
  return text;
}

// Neighbours of one time and lot are taken for samples taken together; of those without either nothing is
// known. `beside` has the times and the lots, where these options are given.
std::vector<Trace::Run> RunsOf(const Arguments& arguments, const std::vector<CsvSample>& samples) {
  std::vector<Trace::Run> runs;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    QStringList beside = samples[i].beside;
    Trace::Run run{static_cast<qsizetype>(i), 1, {}, {}};
    try {
      const QString text = arguments.Has(timeColumn) ? beside.takeFirst() : QString();
      if (!text.isEmpty()) run.time = WrittenTimes::Read(text);
      if (arguments.Has(lotColumn)) run.lot = Trace::LotIn(beside.takeFirst());
    } catch (const InputError& error) {
      throw InputError(Words::Csv::line(arguments.Operands()[1], samples[i].line, error.Text()));
    }
    const bool goesOn = !runs.empty() && runs.back().End() == run.first && runs.back().time == run.time &&
                        runs.back().lot == run.lot;
    if (goesOn)
      ++runs.back().count;
    else if (run.time.isValid() || !run.lot.isEmpty())
      runs.push_back(run);
  }
  return runs;
}

Trace::Source SourceOf(const Arguments& arguments) {
  Trace::Source source;
  try {
    source.lot = Trace::LotIn(arguments.Text(lot));
  } catch (const InputError& error) {
    throw InputError(Words::Command::wrongLot(error.Text()));
  }
  try {
    if (arguments.Has(takenAt)) source.time = WrittenTimes::Read(arguments.Text(takenAt));
  } catch (const InputError& error) {
    throw InputError(Words::Command::wrongTime(error.Text()));
  }
  return source;
}

// A data set's limits are kept with the decimals that they have, up to these.
constexpr qint16 mostDecimals = engine::mostDecimalsShown;

double LimitKept(const Arguments& arguments, const Option& option) {
  const double given = *arguments.Number(option);
  const double kept = MathFunctions::FormatDouble(given, mostDecimals);
  if (kept != given) {
    Console::Warn(Words::Command::keptWithDecimals(option.name, arguments.Text(option), mostDecimals,
                                                   Conversions::CStr(kept)));
  }
  return kept;
}

void FillLimits(const Arguments& arguments, CData& data) {
  CheckSpecLimits(arguments);
  const double upper = LimitKept(arguments, usl);
  const double lower = LimitKept(arguments, lsl);
  const double target = LimitKept(arguments, nominal);
  if (target < lower || target > upper) {
    throw InputError(
        Words::Command::nominalOutside(arguments.Text(nominal), arguments.Text(lsl), arguments.Text(usl)));
  }
  if (!(lower < upper)) {
    throw InputError(Words::Command::limitsAreOne(arguments.Text(lsl), arguments.Text(usl), mostDecimals));
  }
  data.SetUpperSpecLimit(upper);
  data.SetLowerSpecLimit(lower);
  data.SetNominalSpecLimit(target);
  const auto [lowest, highest] = RawDataText::FliersBeyond(lower, upper);
  data.SetHiFlier(highest);
  data.SetLoFlier(lowest);
}

QString VerdictOf(const CData& data) {
  if (data.NumberOfPlotPoints() == 0) return Words::Command::noPoints();
  return data.IsInControl() ? Words::Command::inControl() : Words::Command::ruleBroken(data.RuleViolation());
}

void WarnOfDecimals(const CData& data) {
  if (data.OwnDecimals() <= data.PrecisionValue()) return;
  Console::Warn(Words::Command::moreDecimals(data.OwnDecimals(), data.PrecisionValue()));
}

// What is to be known of the limits that the points are judged by; `areNew` where they are kept for the first
// time.
QString LimitsOf(const CData& data, bool areNew) {
  constexpr int enough = QCGlobalFunctions::pointsForLimits;
  const int points = data.NumberOfPlotPoints();
  if (points == 0) return {};
  if (Tables::LeavesLimitsOpen(data.RowAsKnown()))
    return points < 2 ? Words::Command::noLimits() : Words::Command::noWidth(data.PrecisionValue());
  const QString kept = areNew ? Words::Command::limitsAreKept(Conversions::CStr(data.XBarLCL()),
                                                              Conversions::CStr(data.XBarUCL()))
                              : QString();
  if (points < enough) return kept + Words::Command::preliminary(enough);
  if (const auto few = QCGlobalFunctions::FewPointsOfLimits(data)) return Words::Command::restOnFew(*few);
  return kept;
}

void PrintResult(const CData& data, qsizetype added, bool areLimitsNew = false) {
  WarnOfDecimals(data);
  const auto values = data.DelimitedInputString().count(u',');
  const auto left = values - data.SampleQty();
  const auto counted = [](qsizetype count) {
    return count == 1 ? Words::Command::oneValue() : Words::Command::values(count);
  };
  const QString rest = left > 0 ? Words::Command::leftOver(counted(left)) : QString();
  const QString counts = Words::Command::added(Console::OnOneLine(data.Description()), counted(added), values,
                                               data.NumberOfPlotPoints());
  Console::Tell(counts + rest + u", "_s + VerdictOf(data) + LimitsOf(data, areLimitsNew) + u'\n');
}

QStringList ValuesToAppend(const Arguments& arguments) {
  const WrittenNumbers::Notation notation = Notation(arguments);
  const QStringList words = arguments.Operands().mid(1);
  QStringList values;
  for (const QString& word : words) values += WrittenNumbers::ReadList(word, notation, values.size());
  if (words.isEmpty()) values = WrittenNumbers::ReadList(QString::fromUtf8(Console::ReadInput()), notation);
  if (values.isEmpty() && !arguments.Has(recalculate)) throw InputError(Words::Command::nothingToAppend());
  return values;
}

int RunNew(const Arguments& arguments) {
  Library::Create(arguments.Operands()[0]);
  return 0;
}

std::optional<bool> HeadingOf(const Arguments& arguments) {
  if (arguments.Has(heading) && arguments.Has(noHeading)) throw InputError(Words::Command::headingOrNone());
  if (!arguments.Has(heading) && !arguments.Has(noHeading)) return std::nullopt;
  return arguments.Has(heading);
}

int RunImport(const Arguments& arguments) {
  CData data;
  data.SetFollowsItsDecimals(true);
  data.SetDescription(arguments.Text(description).trimmed());
  CheckName(u"--"_s + description.name, data.Description());
  FillLimits(arguments, data);
  data.SetSubGroupSize(static_cast<qint16>(arguments.Whole(subGroup)));
  data.SetSensitivityValue(arguments.Choice(sensitivity));
  data.SetDetectionPeriod(arguments.Choice(period));
  data.SetUnitOfMeasurement(arguments.Text(unit).trimmed());

  const auto library = Library::Open(arguments.Operands()[0], Console::Warn);
  CsvOptions csv{arguments.Text(column), Notation(arguments), std::pair(data.LoFlier(), data.HiFlier()),
                 data.UnitOfMeasurement(), HeadingOf(arguments)};
  for (const Option& option : {timeColumn, lotColumn})
    if (arguments.Has(option)) csv.beside << arguments.Text(option);
  const std::vector<CsvSample> samples = ReadCsvColumn(arguments.Operands()[1], csv);
  data.SetDelimitedInputString(StoredForm(samples));
  library->Add(data, QDateTime::currentDateTime(), RunsOf(arguments, samples));
  PrintResult(data, std::ssize(samples));
  return 0;
}

int RunAppend(const Arguments& arguments) {
  const QString name = arguments.Text(description).trimmed();
  const QStringList values = ValuesToAppend(arguments);
  const Trace::Source source = SourceOf(arguments);
  const auto library = Library::Open(arguments.Operands()[0], Console::Warn);
  const auto limits = arguments.Has(recalculate) ? Library::Limits::AreRenewed : Library::Limits::Stay;
  const auto [data, keepsLimits] =
      library->Append(name, values, QDateTime::currentDateTime(), limits, source);
  PrintResult(*data, values.size(), keepsLimits);
  return 0;
}

int RunConvert(const Arguments& arguments) {
  const QString place = arguments.Operands()[1];
  if (ServerAddress::IsOne(place))
    throw InputError(Words::Command::convertsToFiles(ServerAddress::WithoutPassword(place)), place);
  AccessImport::Counts counts;
  {
    Console::Progress progress(Words::Command::converting());
    counts = AccessImport::Convert(arguments.Operands()[0], arguments.Operands()[1],
                                   [&](qint64 done, qint64 total) { progress.Show(done, total); });
  }
  Console::Tell(
      Words::Command::converted(arguments.Operands()[1], counts.dataSets, counts.samples, counts.units));
  return 0;
}

}  // namespace

const Command& New() {
  static const Command command = {.name = u"new"_s,
                                  .purpose = Words::Command::newPurpose(),
                                  .operands = {libraryFile},
                                  .options = {},
                                  .details = Words::Command::newDetails(),
                                  .run = RunNew};
  return command;
}

const Command& Import() {
  static const Command command = {
      .name = u"import"_s,
      .purpose = Words::Command::importPurpose(),
      .operands = {libraryFile, {u"CSV"_s, Words::Command::csvFile()}},
      .options = {description, usl.Required(), lsl.Required(), nominal, unit, subGroup, sensitivity, period,
                  column, timeColumn, lotColumn, heading, noHeading, decimal, separator},
      .details = Words::Command::importDetails(),
      .run = RunImport};
  return command;
}

const Command& Append() {
  static const Command command = {.name = u"append"_s,
                                  .purpose = Words::Command::appendPurpose(),
                                  .operands = {libraryFile, {u"VALUE"_s, {}, true}},
                                  .options = {description, takenAt, lot, recalculate, decimal, separator},
                                  .details = Words::Command::appendDetails(),
                                  .run = RunAppend};
  return command;
}

const Command& Convert() {
  static const Command command = {.name = u"convert"_s,
                                  .purpose = Words::Command::convertPurpose(),
                                  .operands = {{u"ACCESSFILE"_s, Words::Command::accessFile()},
                                               {u"LIBRARY"_s, Words::Command::newLibraryFile()}},
                                  .options = {},
                                  .details = Words::Command::convertDetails(),
                                  .run = RunConvert};
  return command;
}

}  // namespace Commands
