// The commands that make and change libraries: new, import, append, convert.
#include <QDateTime>

#include "cli/Arguments.h"
#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/CsvColumn.h"
#include "cli/SharedOptions.h"
#include "data/MathFunctions.h"
#include "data/Statistics.h"
#include "engine/Engine.h"
#include "library/AccessImport.h"
#include "library/Library.h"
#include "platform/error/Error.h"
#include "platform/language/Conversions.h"

using namespace Qt::StringLiterals;

namespace Commands {

namespace {

using namespace SharedOptions;

const Option nominal =
    Option::Number(u"nominal"_s, u"the nominal value, within the specification limits"_s).Required();
const Option unit = Option::Text(u"unit"_s, u"U"_s, u"the unit of measurement"_s);
const Option recalculate =
    Option::Flag(u"recalculate"_s, u"calculates the control limits anew, from all points"_s);
const Option column =
    Option::Text(u"column"_s, u"NAME|N"_s, u"the column, by its number from 1 or its heading"_s);

// The stored form: each value followed by a comma.
QString StoredForm(const QStringList& values) {
  QString text;
  for (const QString& value : values) text += value + u',';
  return text;
}

// A data set's limits are kept with the decimals that they have, up to these.
constexpr qint16 mostDecimals = engine::mostDecimalsShown;

double LimitKept(const Arguments& arguments, const Option& option) {
  const double given = *arguments.Number(option);
  const double kept = MathFunctions::FormatDouble(given, mostDecimals);
  if (kept != given) {
    Console::Warn(u"--%1 %2 is kept with %3 decimals, as %4"_s.arg(option.name, arguments.Text(option))
                      .arg(mostDecimals)
                      .arg(Conversions::CStr(kept)));
  }
  return kept;
}

void FillLimits(const Arguments& arguments, CData& data) {
  CheckSpecLimits(arguments);
  const double upper = LimitKept(arguments, usl);
  const double lower = LimitKept(arguments, lsl);
  const double target = LimitKept(arguments, nominal);
  if (target < lower || target > upper) {
    throw InputError(u"the nominal value %1 does not lie within the specification limits %2 to %3"_s.arg(
        arguments.Text(nominal), arguments.Text(lsl), arguments.Text(usl)));
  }
  if (!(lower < upper)) {
    throw InputError(u"the specification limits %1 and %2 are one with %3 decimals"_s
                         .arg(arguments.Text(lsl), arguments.Text(usl))
                         .arg(mostDecimals));
  }
  data.SetUpperSpecLimit(upper);
  data.SetLowerSpecLimit(lower);
  data.SetNominalSpecLimit(target);
  data.SetHiFlier(upper + (upper - lower));
  data.SetLoFlier(lower - (upper - lower));
}

QString VerdictOf(const CData& data) {
  if (data.NumberOfPlotPoints() == 0) return u"no points yet"_s;
  return data.IsInControl() ? u"in control"_s : u"out of control, rule %1"_s.arg(data.RuleViolation());
}

void WarnOfDecimals(const CData& data) {
  if (data.OwnDecimals() <= data.PrecisionValue()) return;
  Console::Warn(
      u"the values have %1 decimals, of which %2 are shown and judged: a smaller unit would keep them all"_s
          .arg(data.OwnDecimals())
          .arg(data.PrecisionValue()));
}

// What is to be known of the limits that the points are judged by; `before` is the number of points that were
// there.
QString LimitsOf(const CData& data, qsizetype before) {
  constexpr int enough = QCGlobalFunctions::pointsForLimits;
  const int points = data.NumberOfPlotPoints();
  if (points == 0) return {};
  if (!QCGlobalFunctions::LimitsCanBeKept(data))
    return u"; no limits are kept yet, for they need two points with a spread"_s;
  if (points < enough)
    return u"; the limits are preliminary, with fewer than %1 points: append --recalculate renews them"_s.arg(
        enough);
  if (before > 0 && before < enough)
    return u"; the limits may rest on %1 points only: append --recalculate renews them"_s.arg(before);
  return {};
}

void PrintResult(const CData& data, qsizetype added, bool renewed = false) {
  WarnOfDecimals(data);
  const auto values = data.DelimitedInputString().count(u',');
  const auto left = values - data.SampleQty();
  const auto before = renewed ? 0 : (values - added) / data.SubGroupSize();
  const QString rest = left > 0 ? u" and %1 values left over"_s.arg(left) : QString();
  const QString counts =
      u": %1 values added, %2 in all, %3 plot points"_s.arg(added).arg(values).arg(data.NumberOfPlotPoints());
  Console::Tell(data.Description() + counts + rest + u", "_s + VerdictOf(data) + LimitsOf(data, before) +
                u'\n');
}

QStringList ValuesToAppend(const Arguments& arguments) {
  const WrittenNumbers::Notation notation = Notation(arguments);
  const QStringList words = arguments.Operands().mid(1);
  QStringList values;
  for (const QString& word : words) values += WrittenNumbers::ReadList(word, notation, values.size());
  if (words.isEmpty()) values = WrittenNumbers::ReadList(QString::fromUtf8(Console::ReadInput()), notation);
  if (values.isEmpty() && !arguments.Has(recalculate)) throw InputError(u"there are no values to append"_s);
  return values;
}

int RunNew(const Arguments& arguments) {
  Library::Create(arguments.Operands()[0]);
  return 0;
}

int RunImport(const Arguments& arguments) {
  CData data;
  data.SetFollowsItsDecimals(true);
  data.SetDescription(arguments.Text(description).trimmed());
  if (data.Description().isEmpty()) throw InputError(u"--description: the description is empty"_s);
  FillLimits(arguments, data);
  data.SetSubGroupSize(static_cast<qint16>(arguments.Whole(subGroup)));
  data.SetSensitivityValue(arguments.Choice(sensitivity));
  data.SetDetectionPeriod(arguments.Choice(period));
  data.SetUnitOfMeasurement(arguments.Text(unit).trimmed());

  const auto library = Library::Open(arguments.Operands()[0], Console::Warn);
  const CsvOptions csv{arguments.Text(column), Notation(arguments),
                       std::pair(data.LoFlier(), data.HiFlier())};
  const QStringList values = ReadCsvColumn(arguments.Operands()[1], csv);
  data.SetDelimitedInputString(StoredForm(values));
  library->Add(data, QDateTime::currentDateTime());
  PrintResult(data, values.size());
  return 0;
}

int RunAppend(const Arguments& arguments) {
  const QString name = arguments.Text(description).trimmed();
  const QStringList values = ValuesToAppend(arguments);
  const auto library = Library::Open(arguments.Operands()[0], Console::Warn);
  const bool renews = arguments.Has(recalculate);
  const auto limits = renews ? Library::Limits::AreRenewed : Library::Limits::Stay;
  PrintResult(*library->Append(name, values, QDateTime::currentDateTime(), limits), values.size(), renews);
  return 0;
}

int RunConvert(const Arguments& arguments) {
  AccessImport::Counts counts;
  {
    Console::Progress progress(u"converting"_s);
    counts = AccessImport::Convert(arguments.Operands()[0], arguments.Operands()[1],
                                   [&](qint64 done, qint64 total) { progress.Show(done, total); });
  }
  Console::Tell(
      u"%1: %2 data sets, %3 samples, %4 units\n"
      "Compare these counts with Access: its files have no checksum. No reader can see a digit that was "
      "changed\n"
      "within a text, a number that became empty, or texts that changed places.\n"_s
          .arg(arguments.Operands()[1])
          .arg(counts.dataSets)
          .arg(counts.samples)
          .arg(counts.units));
  return 0;
}

}  // namespace

const Command& New() {
  static const Command command = {.name = u"new"_s,
                                  .purpose = u"makes an empty library"_s,
                                  .operands = {libraryFile},
                                  .options = {},
                                  .details = u"An existing file is never overwritten.\n"_s,
                                  .run = RunNew};
  return command;
}

const Command& Import() {
  static const Command command = {
      .name = u"import"_s,
      .purpose = u"adds a data set from one column of a CSV file"_s,
      .operands = {libraryFile, {u"CSV"_s, u"the CSV file"_s}},
      .options = {description, usl.Required(), lsl.Required(), nominal, unit, subGroup, sensitivity, period,
                  column, decimal, separator},
      .details =
          u"The control limits are calculated from the data and kept, once two points have a spread.\n"_s,
      .run = RunImport};
  return command;
}

const Command& Append() {
  static const Command command = {
      .name = u"append"_s,
      .purpose = u"adds values to a data set"_s,
      .operands = {libraryFile, {u"VALUE"_s, {}, true}},
      .options = {description, recalculate, decimal, separator},
      .details =
          u"Without values on the line they are read from standard input. Kept control limits stay as they "
          "are.\n"_s,
      .run = RunAppend};
  return command;
}

const Command& Convert() {
  static const Command command = {
      .name = u"convert"_s,
      .purpose = u"makes a library from an Access file"_s,
      .operands = {{u"ACCESSFILE"_s, u"the Access file"_s}, libraryFile},
      .options = {},
      .details = u"The Access file is only read; an existing file is never overwritten.\n"_s,
      .run = RunConvert};
  return command;
}

}  // namespace Commands
