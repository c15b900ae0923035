// The commands that make and change libraries: new, import, append, convert.
#include <QRegularExpression>
#include <limits>

#include "cli/Arguments.h"
#include "cli/Commands.h"
#include "cli/Console.h"
#include "cli/CsvColumn.h"
#include "cli/LibrarySession.h"
#include "cli/StatisticsOptions.h"
#include "core/AccessImport.h"
#include "core/CreateStatistics.h"
#include "core/DataObjectFunctions.h"
#include "core/Library.h"
#include "data/MathFunctions.h"
#include "platform/ado/Recordset.h"
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

void CheckCount(qsizetype count) {
  constexpr qsizetype most = std::numeric_limits<qint16>::max();
  if (count > most) {
    throw InputError(u"%1 samples are too many: a data set holds at most %2"_s.arg(count).arg(most));
  }
}

void CheckNumbers(const QStringList& values) {
  for (qsizetype i = 0; i < values.size(); ++i) {
    if (!Conversions::IsNumeric(values[i])) {
      throw InputError(u"value %1 (\"%2\") is not a number"_s.arg(i + 1).arg(values[i]));
    }
  }
}

// A data set's limits are kept, and read, with PrecisionValue decimals.
double LimitKept(const Arguments& arguments, const QString& option, const CData& data) {
  const double given = arguments.RequiredNumber(option);
  const double kept = MathFunctions::FormatDouble(given, data.PrecisionValue());
  if (kept != given) {
    Console::Warn(u"--%1 %2 is kept with %3 decimals, as %4"_s.arg(option, arguments.Value(option))
                      .arg(data.PrecisionValue())
                      .arg(Conversions::CStr(kept)));
  }
  return kept;
}

void FillLimits(const Arguments& arguments, CData& data) {
  StatisticsOptions::CheckSpecLimits(arguments);
  const double upper = LimitKept(arguments, u"usl"_s, data);
  const double lower = LimitKept(arguments, u"lsl"_s, data);
  const double nominal = LimitKept(arguments, u"nominal"_s, data);
  if (nominal < lower || nominal > upper) {
    throw InputError(u"the nominal value %1 does not lie within the specification limits %2 to %3"_s.arg(
        arguments.Value(u"nominal"_s), arguments.Value(u"lsl"_s), arguments.Value(u"usl"_s)));
  }
  if (!(lower < upper)) {
    throw InputError(u"the specification limits %1 and %2 are one with %3 decimals"_s
                         .arg(arguments.Value(u"lsl"_s), arguments.Value(u"usl"_s))
                         .arg(data.PrecisionValue()));
  }
  data.SetUpperSpecLimit(upper);
  data.SetLowerSpecLimit(lower);
  data.SetNominalSpecLimit(nominal);
  data.SetHiFlier(upper + (upper - lower));
  data.SetLoFlier(lower - (upper - lower));
}

// A limit of 0 is calculated anew at every load: it stays 0 in the table.
void KeepUncalculated(const engine::ControlLimits& before, CData& data) {
  engine::ControlLimits limits = data.ControlLimits();
  for (const auto& [limit, name] : engine::controlLimitFields) {
    if (before.*limit == 0) limits.*limit = 0;
  }
  data.SetControlLimits(limits);
}

QString VerdictOf(const CData& data) {
  if (data.NumberOfPlotPoints() == 0) return u"no points yet"_s;
  return data.IsInControl() ? u"in control"_s : u"out of control, rule %1"_s.arg(data.RuleViolation());
}

void PrintResult(const CData& data, qsizetype added) {
  const auto values = data.DelimitedInputString().count(u',');
  const auto left = values - data.SampleQty();
  Console::Print(u"%1: %2 values added, %3 in all, %4 plot points%5, %6\n"_s.arg(data.Description())
                     .arg(added)
                     .arg(values)
                     .arg(data.NumberOfPlotPoints())
                     .arg(left > 0 ? u" and %1 values left over"_s.arg(left) : QString(), VerdictOf(data)));
}

// "7,5" may be two values or one with a decimal comma: what is stored must not be a guess.
void RefuseDoubtfulComma(const QString& word) {
  static const QRegularExpression doubtful(u"^[+-]?\\d+,\\d+$"_s);
  if (doubtful.match(word).hasMatch()) {
    throw InputError(
        u"\"%1\" may be one value or two: write decimals with a point, and separate values by blanks"_s.arg(
            word));
  }
}

QStringList ValuesToAppend(const Arguments& arguments) {
  QStringList words = arguments.Positional().mid(1);
  if (words.isEmpty()) {
    static const QRegularExpression blanks(u"[\\s;]+"_s);
    words = QString::fromUtf8(Console::ReadInput()).split(blanks, Qt::SkipEmptyParts);
  }
  QStringList values;
  for (const QString& word : words) {
    RefuseDoubtfulComma(word);
    values += Console::SplitValues(word.toUtf8());
  }
  if (values.isEmpty()) throw InputError(u"there are no values to append"_s);
  CheckNumbers(values);
  return values;
}

// The unit is offered by the data editor from then on.
void AddUnit(const QString& name, Connection& database) {
  if (name.isEmpty()) return;
  database.Execute(
      u"INSERT INTO Units (Name) SELECT ? WHERE NOT EXISTS (SELECT * FROM Units WHERE Name = ? AND Deleted = 0)"_s,
      {name, name});
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
      words, QStringList{u"description"_s, u"nominal"_s, u"unit"_s, u"column"_s} + StatisticsOptions::Names(),
      {});
  arguments.RequirePositional(2, u"the library's or the CSV file"_s);
  const auto data = std::make_shared<CData>();
  data->SetDescription(arguments.Required(u"description"_s).trimmed());
  if (data->Description().isEmpty()) throw InputError(u"--description: the description is empty"_s);
  FillLimits(arguments, *data);
  data->SetSubGroupSize(static_cast<qint16>(StatisticsOptions::SubGroupSize(arguments)));
  data->SetSensitivityValue(static_cast<qint32>(StatisticsOptions::Sensitivity(arguments)));
  data->SetDetectionPeriod(static_cast<qint32>(StatisticsOptions::Period(arguments)));
  data->SetUnitOfMeasurement(arguments.Value(u"unit"_s).trimmed());

  LibrarySession session(arguments.Positional()[0]);
  const QStringList values = ReadCsvColumn(arguments.Positional()[1], arguments.Value(u"column"_s));
  CheckCount(values.size());
  data->SetDelimitedInputString(StoredForm(values));
  session.Require([&] { return QCGlobalFunctions::CreateStatistics(*data); });

  // One transaction, so that nobody adds the same description in between.
  Transaction transaction(session.Database());
  if (session.ReadDataSet(data->Description())) {
    throw InputError(
        u"%1 has a data set \"%2\" already"_s.arg(arguments.Positional()[0], data->Description()));
  }
  session.Require([&] { return DataObjectFunctions::SaveDataObjectToDatabase(data); });
  AddUnit(data->UnitOfMeasurement(), session.Database());
  transaction.Commit();
  PrintResult(*data, values.size());
  return 0;
}

int Append(const QStringList& words) {
  const Arguments arguments(words, {u"description"_s}, {});
  arguments.RequirePositional(1, u"the library's file"_s, true);
  const QString description = arguments.Required(u"description"_s).trimmed();
  const QStringList values = ValuesToAppend(arguments);

  LibrarySession session(arguments.Positional()[0]);
  // One transaction from reading to writing: of two programs that append at once, neither loses the other's
  // values.
  Transaction transaction(session.Database());
  const CDataPtr data = session.ReadDataSet(description);
  if (!data) throw InputError(u"%1 has no data set \"%2\""_s.arg(arguments.Positional()[0], description));
  QString text = data->DelimitedInputString();
  if (!text.trimmed().isEmpty() && !text.endsWith(u',')) text += u',';
  text += StoredForm(values);
  CheckCount(text.count(u','));
  data->SetDelimitedInputString(text);
  const engine::ControlLimits before = data->ControlLimits();
  session.Require([&] { return QCGlobalFunctions::CreateStatistics(*data); });
  KeepUncalculated(before, *data);
  session.Require([&] { return DataObjectFunctions::SaveDataObjectToDatabase(data); });
  transaction.Commit();
  PrintResult(*data, values.size());
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
