// The commands that make and change libraries: new, import, append, convert.
#include <QDateTime>

#include "cli/Arguments.h"
#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/CsvColumn.h"
#include "cli/StatisticsOptions.h"
#include "data/MathFunctions.h"
#include "engine/Engine.h"
#include "library/AccessImport.h"
#include "library/Library.h"
#include "platform/error/Error.h"
#include "platform/language/Conversions.h"

using namespace Qt::StringLiterals;

namespace Commands {

namespace {

// The stored form: each value followed by a comma.
QString StoredForm(const QStringList& values) {
  QString text;
  for (const QString& value : values) text += value + u',';
  return text;
}

// A data set's limits are kept with the decimals that they have, up to these.
constexpr qint16 mostDecimals = engine::mostDecimalsShown;

double LimitKept(const Arguments& arguments, const QString& option) {
  const double given = arguments.RequiredNumber(option);
  const double kept = MathFunctions::FormatDouble(given, mostDecimals);
  if (kept != given) {
    Console::Warn(u"--%1 %2 is kept with %3 decimals, as %4"_s.arg(option, arguments.Value(option))
                      .arg(mostDecimals)
                      .arg(Conversions::CStr(kept)));
  }
  return kept;
}

void FillLimits(const Arguments& arguments, CData& data) {
  StatisticsOptions::CheckSpecLimits(arguments);
  const double upper = LimitKept(arguments, u"usl"_s);
  const double lower = LimitKept(arguments, u"lsl"_s);
  const double nominal = LimitKept(arguments, u"nominal"_s);
  if (nominal < lower || nominal > upper) {
    throw InputError(u"the nominal value %1 does not lie within the specification limits %2 to %3"_s.arg(
        arguments.Value(u"nominal"_s), arguments.Value(u"lsl"_s), arguments.Value(u"usl"_s)));
  }
  if (!(lower < upper)) {
    throw InputError(u"the specification limits %1 and %2 are one with %3 decimals"_s
                         .arg(arguments.Value(u"lsl"_s), arguments.Value(u"usl"_s))
                         .arg(mostDecimals));
  }
  data.SetUpperSpecLimit(upper);
  data.SetLowerSpecLimit(lower);
  data.SetNominalSpecLimit(nominal);
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
  const WrittenNumbers::Notation notation = StatisticsOptions::Notation(arguments);
  const QStringList words = arguments.Positional().mid(1);
  QStringList values;
  for (const QString& word : words) values += WrittenNumbers::ReadList(word, notation, values.size());
  if (words.isEmpty()) values = WrittenNumbers::ReadList(QString::fromUtf8(Console::ReadInput()), notation);
  if (values.isEmpty()) throw InputError(u"there are no values to append"_s);
  return values;
}

}  // namespace

int New(const QStringList& words) {
  const Arguments arguments(words, {}, {});
  arguments.RequirePositional(1, u"the library's file"_s);
  Library::Create(arguments.Positional()[0]);
  return 0;
}

int Import(const QStringList& words) {
  const Arguments arguments(
      words,
      QStringList{u"description"_s, u"nominal"_s, u"unit"_s, u"column"_s, u"decimal"_s, u"separator"_s} +
          StatisticsOptions::Names(),
      {});
  arguments.RequirePositional(2, u"the library's or the CSV file"_s);
  CData data;
  data.SetFollowsItsDecimals(true);
  data.SetDescription(arguments.Required(u"description"_s).trimmed());
  if (data.Description().isEmpty()) throw InputError(u"--description: the description is empty"_s);
  FillLimits(arguments, data);
  data.SetSubGroupSize(static_cast<qint16>(StatisticsOptions::SubGroupSize(arguments)));
  data.SetSensitivityValue(static_cast<qint32>(StatisticsOptions::Sensitivity(arguments)));
  data.SetDetectionPeriod(static_cast<qint32>(StatisticsOptions::Period(arguments)));
  data.SetUnitOfMeasurement(arguments.Value(u"unit"_s).trimmed());

  const auto library = Library::Open(arguments.Positional()[0], Console::Warn);
  const CsvOptions csv{arguments.Value(u"column"_s), StatisticsOptions::Notation(arguments),
                       std::pair(data.LoFlier(), data.HiFlier())};
  const QStringList values = ReadCsvColumn(arguments.Positional()[1], csv);
  data.SetDelimitedInputString(StoredForm(values));
  library->Add(data, QDateTime::currentDateTime());
  PrintResult(data, values.size());
  return 0;
}

int Append(const QStringList& words) {
  const Arguments arguments(words, {u"description"_s, u"decimal"_s, u"separator"_s}, {});
  arguments.RequirePositional(1, u"the library's file"_s, true);
  const QString description = arguments.Required(u"description"_s).trimmed();
  const QStringList values = ValuesToAppend(arguments);

  const auto library = Library::Open(arguments.Positional()[0], Console::Warn);
  PrintResult(*library->Append(description, values, QDateTime::currentDateTime()), values.size());
  return 0;
}

int Convert(const QStringList& words) {
  const Arguments arguments(words, {}, {});
  arguments.RequirePositional(2, u"the Access file or the library's file"_s);
  Console::Progress progress(u"converting"_s);
  AccessImport::Convert(arguments.Positional()[0], arguments.Positional()[1],
                        [&](qint64 done, qint64 total) { progress.Show(done, total); });
  return 0;
}

}  // namespace Commands
