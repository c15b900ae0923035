// The tables of a library and their columns: the one list that making, reading, writing and converting go by.
#pragma once

#include <QString>
#include <QStringList>
#include <QVariantList>
#include <array>
#include <vector>

#include "data/CData.h"

struct Column {
  // Name: a text whose case does not count in a search; Text: any other.
  enum class Kind { Id, Whole, Real, Name, Text, YesNo };
  // StatData only: what is merged as one where two have changed a row; None is not written by a save.
  enum class Unit {
    None,
    Values,
    ControlLimits,
    SpecLimits,
    Fliers,
    Sensitivity,
    DetectionPeriod,
    UnitOfMeasurement
  };

  QString name;
  Kind kind;
  Unit unit = Unit::None;
  // StatData only: the value of a row into a data set, and back. Read throws Error.
  void (*read)(const QVariant& value, const QString& column, CData& data) = nullptr;
  QVariant (*write)(const CData& data) = nullptr;

  QString Quoted() const { return u'"' + name + u'"'; }
  bool IsText() const { return kind == Kind::Name || kind == Kind::Text; }
  bool IsControlLimit() const { return unit == Unit::ControlLimits && kind == Kind::Real; }
};

struct Table {
  QString name;
  std::vector<Column> columns;

  QStringList ColumnNames() const;
  QString ColumnList() const;  // quoted, as it stands in a statement that names the table already
  // Each with the table that it is read from: else the database takes an unknown quoted name for a text.
  QString ColumnList(const QString& from) const;
  qsizetype IndexOf(QStringView column) const;
};

namespace Tables {

const Table& StatData();
const Table& Units();
const Table& Revisions();  // DBRevision
const std::array<Table, 3>& All();

// A row of StatData, its columns in the table's order, into a data set, which then knows that row; no
// statistics. Error where a value is missing or cannot be what it should be.
void Fill(CData& data, const QVariantList& row);

// The columns as the data set has them.
QVariantList RowOf(const CData& data);

qint64 IdOf(const QVariantList& row);

// Whether the row's control limits are 0, to be calculated at each load, or of no width: these would call
// every other value out of control, and are calculated as well.
bool LeavesLimitsOpen(const QVariantList& row);

QString DateText(const QDateTime& time);  // as LastModified holds it

}  // namespace Tables
