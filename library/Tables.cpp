#include "library/Tables.h"

#include <QDateTime>
#include <algorithm>

#include "platform/error/Error.h"
#include "platform/language/Conversions.h"
#include "texts/LibraryWords.h"

using namespace Qt::StringLiterals;

namespace {

using Kind = Column::Kind;
using Unit = Column::Unit;

double Number(const QVariant& value, const QString& column) {
  if (value.isNull()) throw Error(Words::Library::isNull(column));
  bool isNumber = false;
  const double number = value.toDouble(&isNumber);
  if (!isNumber) throw Error(Words::Library::isNoNumber(column));
  return number;
}

double NumberOrZero(const QVariant& value, const QString& column) {
  return value.isNull() ? 0 : Number(value, column);
}

QString TextOf(const QVariant& value) {
  const bool isDate = value.userType() == QMetaType::QDateTime;
  return isDate ? Tables::DateText(value.toDateTime()) : value.toString();
}

void ReadValues(const QVariant& value, const QString&, CData& data) {
  data.SetDelimitedInputString(value.toString());
  const auto samples = Conversions::SplitUpperBound(data.DelimitedInputString(), u',');
  data.SetSampleQty(Conversions::CInt(static_cast<double>(samples)));
}

// A column between a value of the database and the property that it is for: how the value is read, and what
// it is converted by.
#define COLUMN(Kind, Unit, Property, Convert, Read)                                      \
  Column {                                                                               \
    QStringLiteral(#Property), Kind, Unit,                                               \
        [](const QVariant& value, [[maybe_unused]] const QString& column, CData& data) { \
          data.Set##Property(Convert(Read));                                             \
        },                                                                               \
        [](const CData& data) -> QVariant { return QVariant(data.Property()); }          \
  }
#define REAL(Unit, Property) COLUMN(Kind::Real, Unit, Property, double, Number(value, column))
#define LONG(Unit, Property) \
  COLUMN(Kind::Whole, Unit, Property, Conversions::CLng, NumberOrZero(value, column))
#define NAME(Unit, Property) COLUMN(Kind::Name, Unit, Property, QString, value.toString())

Table StatDataTable() {
  return {
      u"StatData"_s,
      {COLUMN(Kind::Id, Unit::None, ID, Conversions::CLng, Number(value, column)),
       NAME(Unit::None, Description),
       {u"Values"_s, Kind::Text, Unit::Values, ReadValues,
        [](const CData& data) { return QVariant(data.DelimitedInputString()); }},
       COLUMN(Kind::Text, Unit::None, LastModified, QString, TextOf(value)),
       REAL(Unit::SpecLimits, NominalSpecLimit),
       REAL(Unit::SpecLimits, UpperSpecLimit),
       REAL(Unit::SpecLimits, LowerSpecLimit),
       REAL(Unit::Fliers, HiFlier),
       REAL(Unit::Fliers, LoFlier),
       REAL(Unit::ControlLimits, XBarUCL),
       REAL(Unit::ControlLimits, XBarLCL),
       REAL(Unit::ControlLimits, XBarMean),
       REAL(Unit::ControlLimits, RBarUCL),
       REAL(Unit::ControlLimits, RBarLCL),
       REAL(Unit::ControlLimits, RBarMean),
       COLUMN(Kind::Whole, Unit::ControlLimits, SubGroupSize, Conversions::CInt, NumberOrZero(value, column)),
       LONG(Unit::Sensitivity, SensitivityValue),
       LONG(Unit::DetectionPeriod, DetectionPeriod),
       NAME(Unit::UnitOfMeasurement, UnitOfMeasurement)}};
}

#undef NAME
#undef LONG
#undef REAL
#undef COLUMN

}  // namespace

QStringList Table::ColumnNames() const {
  QStringList names;
  for (const Column& column : columns) names << column.name;
  return names;
}

QString Table::ColumnList() const {
  QStringList names;
  for (const Column& column : columns) names << column.Quoted();
  return names.join(u", "_s);
}

QString Table::ColumnList(const QString& from) const {
  QStringList names;
  for (const Column& column : columns) names << from + u'.' + column.Quoted();
  return names.join(u", "_s);
}

qsizetype Table::IndexOf(QStringView column) const {
  return std::ranges::find(columns, column, &Column::name) - columns.begin();
}

namespace Tables {

const std::array<Table, 3>& All() {
  static const std::array<Table, 3> tables = {StatDataTable(),
                                              Table{u"Units"_s,
                                                    {{u"ID"_s, Kind::Id},
                                                     {u"Name"_s, Kind::Name},
                                                     {u"Description"_s, Kind::Name},
                                                     {u"Deleted"_s, Kind::YesNo}}},
                                              Table{u"DBRevision"_s, {{u"Revision"_s, Kind::Name}}}};
  return tables;
}

const Table& StatData() { return All()[0]; }
const Table& Units() { return All()[1]; }
const Table& Revisions() { return All()[2]; }

void Fill(CData& data, const QVariantList& row) {
  const std::vector<Column>& columns = StatData().columns;
  for (std::size_t i = 0; i < columns.size(); ++i)
    columns[i].read(row[static_cast<qsizetype>(i)], columns[i].name, data);
  if (LeavesLimitsOpen(row) && data.ControlLimits().xBarUpper != 0) data.SetControlLimits({});
  data.SetRowAsKnown(row);
}

QVariantList RowOf(const CData& data) {
  QVariantList row;
  for (const Column& column : StatData().columns) row << column.write(data);
  return row;
}

qint64 IdOf(const QVariantList& row) { return row.front().toLongLong(); }

bool LeavesLimitsOpen(const QVariantList& row) {
  const Table& table = StatData();
  return row[table.IndexOf(u"XBarUCL")].toDouble() == row[table.IndexOf(u"XBarLCL")].toDouble();
}

QString DateText(const QDateTime& time) { return time.toString(u"yyyy-MM-dd HH:mm:ss"_s); }

}  // namespace Tables
