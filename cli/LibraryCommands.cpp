// The commands that make and change libraries: new, import, append, convert.
#include <QDateTime>

#include "cli/Arguments.h"
#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/CsvColumn.h"
#include "cli/SharedOptions.h"
#include "data/MathFunctions.h"
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

void PrintResult(const CData& data, qsizetype added) {
  WarnOfDecimals(data);
  const auto values = data.DelimitedInputString().count(u',');
  const auto left = values - data.SampleQty();
  Console::Print(u"%1: %2 values added, %3 in all, %4 plot points%5, %6\n"_s.arg(data.Description())
                     .arg(added)
                     .arg(values)
                     .arg(data.NumberOfPlotPoints())
                     .arg(left > 0 ? u" and %1 values left over"_s.arg(left) : QString(), VerdictOf(data)));
}

QStringList ValuesToAppend(const Arguments& arguments) {
  const WrittenNumbers::Notation notation = Notation(arguments);
  const QStringList words = arguments.Operands().mid(1);
  QStringList values;
  for (const QString& word : words) values += WrittenNumbers::ReadList(word, notation, values.size());
  if (words.isEmpty()) values = WrittenNumbers::ReadList(QString::fromUtf8(Console::ReadInput()), notation);
  if (values.isEmpty()) throw InputError(u"there are no values to append"_s);
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
  PrintResult(*library->Append(name, values, QDateTime::currentDateTime()), values.size());
  return 0;
}

int RunConvert(const Arguments& arguments) {
  Console::Progress progress(u"converting"_s);
  AccessImport::Convert(arguments.Operands()[0], arguments.Operands()[1],
                        [&](qint64 done, qint64 total) { progress.Show(done, total); });
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
  static const Command command = {.name = u"import"_s,
                                  .purpose = u"adds a data set from one column of a CSV file"_s,
                                  .operands = {libraryFile, {u"CSV"_s, u"the CSV file"_s}},
                                  .options = {description, usl.Required(), lsl.Required(), nominal, unit,
                                              subGroup, sensitivity, period, column, decimal, separator},
                                  .details = u"The control limits are calculated from the data and kept.\n"_s,
                                  .run = RunImport};
  return command;
}

const Command& Append() {
  static const Command command = {
      .name = u"append"_s,
      .purpose = u"adds values to a data set"_s,
      .operands = {libraryFile, {u"VALUE"_s, {}, true}},
      .options = {description, decimal, separator},
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
