#include "library/Tables.h"

#include <QDateTime>
#include <algorithm>

#include "platform/error/Error.h"
#include "platform/language/Conversions.h"
#include "texts/LibraryWords.h"

using namespace Qt::StringLiterals;

namespace {

using Kind = Column::Kind;

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
#define COLUMN(Kind, Property, Convert, Read)                                            \
  Column {                                                                               \
    QStringLiteral(#Property), Kind,                                                     \
        [](const QVariant& value, [[maybe_unused]] const QString& column, CData& data) { \
          data.Set##Property(Convert(Read));                                             \
        },                                                                               \
        [](const CData& data) -> QVariant { return QVariant(data.Property()); }          \
  }
#define REAL(Property) COLUMN(Kind::Real, Property, double, Number(value, column))
#define LONG(Property) COLUMN(Kind::Whole, Property, Conversions::CLng, NumberOrZero(value, column))
#define NAME(Property) COLUMN(Kind::Name, Property, QString, value.toString())

Table StatDataTable() {
  return {u"StatData"_s,
          {COLUMN(Kind::Id, ID, Conversions::CLng, Number(value, column)),
           NAME(Description),
           {u"Values"_s, Kind::Text, ReadValues,
            [](const CData& data) { return QVariant(data.DelimitedInputString()); }},
           COLUMN(Kind::Text, LastModified, QString, TextOf(value)),
           REAL(NominalSpecLimit),
           REAL(UpperSpecLimit),
           REAL(LowerSpecLimit),
           REAL(HiFlier),
           REAL(LoFlier),
           REAL(XBarUCL),
           REAL(XBarLCL),
           REAL(XBarMean),
           REAL(RBarUCL),
           REAL(RBarLCL),
           REAL(RBarMean),
           COLUMN(Kind::Whole, SubGroupSize, Conversions::CInt, NumberOrZero(value, column)),
           LONG(SensitivityValue),
           LONG(DetectionPeriod),
           NAME(UnitOfMeasurement)}};
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

CDataPtr DataSetOf(const QVariantList& row) {
  const auto data = std::make_shared<CData>();
  data->SetFollowsItsDecimals(true);
  const std::vector<Column>& columns = StatData().columns;
  for (std::size_t i = 0; i < columns.size(); ++i)
    columns[i].read(row[static_cast<qsizetype>(i)], columns[i].name, *data);
  data->SetRowAsKnown(row);
  return data;
}

bool IsWrittenBySave(const Column& column) {
  return column.kind != Kind::Id && column.name != "Description"_L1 && column.name != "LastModified"_L1;
}

QString DateText(const QDateTime& time) { return time.toString(u"yyyy-MM-dd HH:mm:ss"_s); }

}  // namespace Tables
