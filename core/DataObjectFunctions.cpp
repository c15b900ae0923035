#include "core/DataObjectFunctions.h"

#include <QtConcurrentMap>
#include <exception>

#include "core/CreateStatistics.h"
#include "core/GlobalFunctions.h"
#include "core/Globals.h"
#include "core/Trap.h"
#include "platform/ado/Recordset.h"
#include "platform/language/Conversions.h"
#include "platform/system/EventPump.h"
#include "texts/Texts.h"

using namespace Qt::StringLiterals;

namespace {

struct DoubleColumn {
  QString name;
  double (CData::*read)() const;
  void (CData::*store)(double);
};

#define DOUBLE_COLUMN(Name) \
  DoubleColumn { QStringLiteral(#Name), &CData::Name, &CData::Set##Name }

// In the order in which they are written.
const std::vector<DoubleColumn>& DoubleColumns() {
  static const std::vector<DoubleColumn> columns = {
      DOUBLE_COLUMN(NominalSpecLimit), DOUBLE_COLUMN(UpperSpecLimit), DOUBLE_COLUMN(LowerSpecLimit),
      DOUBLE_COLUMN(HiFlier),          DOUBLE_COLUMN(LoFlier),        DOUBLE_COLUMN(XBarUCL),
      DOUBLE_COLUMN(XBarLCL),          DOUBLE_COLUMN(XBarMean),       DOUBLE_COLUMN(RBarUCL),
      DOUBLE_COLUMN(RBarLCL),          DOUBLE_COLUMN(RBarMean)};
  return columns;
}

#undef DOUBLE_COLUMN

double Number(const QVariant& value, const QString& column) {
  if (value.isNull()) throw Error(u"%1 is Null."_s.arg(column));
  bool isNumber = false;
  const double number = value.toDouble(&isNumber);
  if (!isNumber) throw Error(u"%1 is no number."_s.arg(column));
  return number;
}

double NumberOrZero(const Recordset& rows, const QString& column) {
  const QVariant& value = rows.Field(column);
  return value.isNull() ? 0 : Number(value, column);
}

QString DateText(const QVariant& value) {
  const bool isDate = value.userType() == QMetaType::QDateTime;
  return isDate ? value.toDateTime().toString(u"yyyy-MM-dd HH:mm:ss"_s) : value.toString();
}

void Fill(CData& data, const Recordset& rows) {
  data.SetDescription(rows.Field(u"Description"_s).toString());
  data.SetDelimitedInputString(rows.Field(u"Values"_s).toString());
  const auto samples = Conversions::SplitUpperBound(data.DelimitedInputString(), u',');
  data.SetSampleQty(Conversions::CInt(static_cast<double>(samples)));
  data.SetID(Conversions::CLng(Number(rows.Field(u"ID"_s), u"ID"_s)));
  data.SetLastModified(DateText(rows.Field(u"LastModified"_s)));
  for (const DoubleColumn& column : DoubleColumns())
    (data.*column.store)(Number(rows.Field(column.name), column.name));
  data.SetSubGroupSize(Conversions::CInt(NumberOrZero(rows, u"SubGroupSize"_s)));
  data.SetSensitivityValue(Conversions::CLng(NumberOrZero(rows, u"SensitivityValue"_s)));
  data.SetDetectionPeriod(Conversions::CLng(NumberOrZero(rows, u"DetectionPeriod"_s)));
  data.SetUnitOfMeasurement(rows.Field(u"UnitOfMeasurement"_s).toString());
}

CDataPtr MakeDataObject(const Recordset& rows) {
  const auto data = std::make_shared<CData>();
  try {
    Fill(*data, rows);
    data->SetRowAsKnown(rows.Fields());
  } catch (const std::exception& error) {
    const QString name = rows.Field(u"Description"_s).toString();
    const QString id = rows.Field(u"ID"_s).toString();
    throw Error(u"Data set \"%1\" (ID %2): %3"_s.arg(name, id, ErrorText(error)));
  }
  return data;
}

void Write(CData& data, Recordset& row) {
  for (const DoubleColumn& column : DoubleColumns()) row.SetField(column.name, (data.*column.read)());
  row.SetField(u"SubGroupSize"_s, data.SubGroupSize());
  row.SetField(u"SensitivityValue"_s, data.SensitivityValue());
  row.SetField(u"DetectionPeriod"_s, data.DetectionPeriod());
  row.SetField(u"UnitOfMeasurement"_s, data.UnitOfMeasurement());
  row.SetField(u"Values"_s, data.DelimitedInputString());
  data.SetLastModified(DateText(Globals().clock->Now()));
  row.SetField(u"LastModified"_s, data.LastModified());
}

// The row was changed or deleted since the data set was read.
class Conflict : public Error {
 public:
  using Error::Error;
};

void RequireRowAsKnown(const CData& data, const Recordset& row) {
  if (data.RowAsKnown().isEmpty()) return;
  if (row.RecordCount() < 1)
    throw Conflict(LoadResText(u"The data set was deleted;306").arg(data.Description()));
  if (row.Fields() != data.RowAsKnown())
    throw Conflict(LoadResText(u"The data set was changed;305").arg(data.Description()));
}

// True where that makes a new row.
bool WriteRow(CData& data) {
  Transaction transaction(CurrentConnection());
  Recordset row;
  row.Open(u"SELECT * FROM StatData where ID = %1"_s.arg(data.ID()), CurrentConnection());
  RequireRowAsKnown(data, row);
  const bool isNew = row.RecordCount() < 1;
  if (isNew) {
    row.AddNew();
    row.SetField(u"Description"_s, data.Description());
  }
  Write(data, row);
  row.Update();
  if (!isNew) row.Requery();  // the values as the table keeps them
  const QVariantList written = row.Fields();
  transaction.Commit();
  data.SetRowAsKnown(written);
  return isNew;
}

// The look-up compares the column Name, which StatData need not have. The data set is saved all the same, so
// its failure is not worth a message: the caller sees the ID 0.
qint32 IDOfNewRecord(const QString& description) {
  try {
    return QCGlobalFunctions::FindIDByName(u"StatData"_s, u"Description"_s, description);
  } catch (const std::exception&) {
    return 0;
  }
}

// The first entry that fits, or the end. The scans count in 16 bits: what lies behind that is out of reach.
template <class Predicate>
std::vector<CDataPtr>::iterator Find(Predicate&& fits) {
  auto& collection = Globals().gDataCollection;
  for (size_t i = 0; i < collection.size(); ++i) {
    if (i == std::numeric_limits<qint16>::max()) throw Conversions::Overflow();
    if (fits(*collection[i])) return collection.begin() + static_cast<std::ptrdiff_t>(i);
  }
  return collection.end();
}

auto FindByID(qint32 id) {
  return Find([id](const CData& data) { return data.ID() == id; });
}

bool IsEntry(std::vector<CDataPtr>::iterator found) { return found != Globals().gDataCollection.end(); }

}  // namespace

namespace DataObjectFunctions {

bool InitializeCDataCollection() {
  return Trap(u"DataObjectFunctions::InitializeCDataCollection"_s, false, [] {
    ProgramState& state = Globals();
    DeleteAllDataObjects();
    const quint32 emptied = state.gCollectionEmptied;
    Recordset rows;
    rows.Open(u"SELECT * FROM StatData"_s, CurrentConnection());
    if (rows.RecordCount() < 1) return false;
    for (rows.MoveFirst(); !rows.EndOfFile(); rows.MoveNext()) {
      DoEvents();
      // The user may have attached another database or closed the program meanwhile.
      if (state.gCollectionEmptied != emptied) return false;
      const CDataPtr data = MakeDataObject(rows);
      if (!QCGlobalFunctions::CreateStatistics(*data)) return false;
      state.gDataCollection.push_back(data);
    }
    return true;
  });
}

bool InitializeCDataCollectionOnAllCores() {
  return Trap(u"DataObjectFunctions::InitializeCDataCollection"_s, false, [] {
    DeleteAllDataObjects();
    Recordset rows;
    rows.Open(u"SELECT * FROM StatData"_s, CurrentConnection());
    if (rows.RecordCount() < 1) return false;
    std::vector<CDataPtr> dataSets;
    std::exception_ptr badRow;
    try {
      for (rows.MoveFirst(); !rows.EndOfFile(); rows.MoveNext()) dataSets.push_back(MakeDataObject(rows));
    } catch (const std::exception&) {
      badRow = std::current_exception();
    }
    QtConcurrent::blockingMap(dataSets,
                              [](const CDataPtr& data) { QCGlobalFunctions::CalculateStatistics(*data); });
    for (const CDataPtr& data : dataSets) {
      // The first one that was refused is refused again, here with its message.
      if (data->ErrorType() != 0 && !QCGlobalFunctions::CreateStatistics(*data)) return false;
      Globals().gDataCollection.push_back(data);
    }
    if (badRow) std::rethrow_exception(badRow);
    return true;
  });
}

bool SaveDataObjectToDatabase(const CDataPtr& data) {
  return Trap(u"DataObjectFunctions::SaveDataObjectToDatabase"_s, false, [&] {
    bool isNew = false;
    try {
      isNew = WriteRow(*data);
    } catch (const Conflict& conflict) {
      ShowSystemMessage(ErrorText(conflict), MessageBox::Icon::Exclamation);
      return false;
    }
    data->SetIsDataValid(true);
    data->SetDataChanged(false);
    if (isNew) {
      data->SetID(IDOfNewRecord(data->Description()));
      Globals().gDataCollection.push_back(data);
    }
    return true;
  });
}

CDataPtr ReadDataObject(const QString& description) {
  const QString quoted = QString(description).replace(u'\'', u"''"_s);
  Recordset rows;
  rows.Open(u"SELECT * FROM StatData WHERE Description = '%1'"_s.arg(quoted), CurrentConnection());
  return rows.RecordCount() < 1 ? nullptr : MakeDataObject(rows);
}

bool AddDataObjectToSystem(const CDataPtr& data) {
  return Trap(u"DataObjectFunctions::AddDataObjectToSystem"_s, false, [&] {
    Globals().gDataCollection.push_back(data);
    if (MainScreen* screen = Globals().mainScreen) screen->AddListRow(*data);
    return true;
  });
}

bool ModifyDataObjectInSystem(const CDataPtr& data) {
  return Trap(u"DataObjectFunctions::ModifyDataObjectInSystem"_s, false, [&] {
    if (!UpdateCollectionObject(data)) return false;
    if (MainScreen* screen = Globals().mainScreen) screen->UpdateListRow(*data);
    return true;
  });
}

bool UpdateCollectionObject(const CDataPtr& data) {
  return Trap(u"DataObjectFunctions::UpdateCollectionObject"_s, false, [&] {
    FindByID(data->ID());
    return true;
  });
}

bool DeleteDataObjectfromListview(qint32 id) {
  return Trap(u"DataObjectFunctions::DeleteDataObjectfromListview"_s, false, [&] {
    if (MainScreen* screen = Globals().mainScreen) screen->RemoveListRow(id);
    return true;
  });
}

bool DeleteDataObjectByID(qint32 id) {
  return Trap(u"DataObjectFunctions::DeleteDataObjectByID"_s, false, [&] {
    if (const auto found = FindByID(id); IsEntry(found)) Globals().gDataCollection.erase(found);
    return true;
  });
}

void DeleteAllDataObjects() {
  Trap(u"DataObjectFunctions::DeleteAllDataObjects"_s, [] {
    Globals().gDataCollection.clear();
    ++Globals().gCollectionEmptied;
  });
}

bool GetDataObjectByID(qint32 id, CDataPtr& data) {
  data.reset();
  return Trap(u"DataObjectFunctions::GetDataObjectByID"_s, false, [&] {
    if (const auto found = FindByID(id); IsEntry(found)) data = *found;
    return true;
  });
}

QString GetDataObjectDescription(qint32 id) {
  return Trap(u"DataObjectFunctions::GetDataObjectDescription"_s, QString(), [&] {
    const auto found = FindByID(id);
    return IsEntry(found) ? (*found)->Description() : QString();
  });
}

qint32 GetCurrentDataObjectID(const QString& description) {
  return Trap(u"DataObjectFunctions::GetCurrentDataObjectID"_s, 0, [&] {
    const auto found = Find([&](const CData& data) { return data.Description() == description; });
    return IsEntry(found) ? (*found)->ID() : 0;
  });
}

}  // namespace DataObjectFunctions
