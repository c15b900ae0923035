#include "tests/support/TestProgram.h"

#include "core/Library.h"
#include "platform/ado/Recordset.h"

using namespace Qt::StringLiterals;

void RecordedMainScreen::EnableLoadTimer() { calls << u"EnableLoadTimer"_s; }
void RecordedMainScreen::SetupMainFormDisplay() { calls << u"SetupMainFormDisplay"_s; }
void RecordedMainScreen::AddListRow(const CData& data) { calls << u"AddListRow "_s + data.Description(); }
void RecordedMainScreen::UpdateListRow(const CData& data) {
  calls << u"UpdateListRow "_s + data.Description();
}
void RecordedMainScreen::RemoveListRow(qint32 id) { calls << u"RemoveListRow %1"_s.arg(id); }

TestProgram::TestProgram() {
  Library::Create(LibraryPath());
  state.gConnection = std::make_unique<Connection>();
  state.gConnection->OpenWith(LibraryPath());
  state.gDatabaseOpen = true;
  state.gSetup.RegistryKeyPath = u"Software\\Orvane Labs\\Kestrel"_s;
  state.mainScreen = &screen;
  state.registry = &registry;
  state.clock = &clock;
  previous_ = InstallGlobals(&state);
}

TestProgram::~TestProgram() {
  Connection::FaultHook = nullptr;
  InstallGlobals(previous_);
}

void TestProgram::Execute(const QString& sql, const QVariantList& values) const {
  Connection connection;
  connection.OpenWith(LibraryPath());
  connection.Execute(sql, values);
}

std::vector<QVariantList> TestProgram::Rows(const QString& sql, const QString& path) const {
  Connection connection;
  connection.OpenWith(path.isEmpty() ? LibraryPath() : path);
  Recordset recordset;
  recordset.Open(sql, connection);
  std::vector<QVariantList> rows;
  for (; !recordset.EndOfFile(); recordset.MoveNext()) {
    QVariantList row;
    for (const QString& name : recordset.FieldNames()) row << recordset.Field(name);
    rows.push_back(row);
  }
  return rows;
}

CDataPtr TestProgram::NewDataSet(const QString& description) {
  const auto data = std::make_shared<CData>();
  data->SetDescription(description);
  data->SetUnitOfMeasurement(u"MM"_s);
  QString values;
  for (int i = 0; i < 40; ++i) values += QString::number(9.5 + (i * 7 % 11) / 10.0) + u',';
  data->SetDelimitedInputString(values);
  data->SetSampleQty(40);
  data->SetSubGroupSize(4);
  data->SetUpperSpecLimit(12);
  data->SetLowerSpecLimit(8);
  data->SetNominalSpecLimit(10);
  return data;
}

qint32 TestProgram::Insert(const QString& description) const {
  const CDataPtr data = NewDataSet(description);
  Connection connection;
  connection.OpenWith(LibraryPath());
  Recordset rows;
  rows.Open(u"SELECT * FROM StatData WHERE ID = -1"_s, connection);
  rows.AddNew();
  for (const QString& name : rows.FieldNames())
    if (name != u"ID"_s) rows.SetField(name, 0);
  rows.SetField(u"Description"_s, description);
  rows.SetField(u"Values"_s, data->DelimitedInputString());
  rows.SetField(u"LastModified"_s, u"2024-01-01 00:00:00"_s);
  rows.SetField(u"UnitOfMeasurement"_s, data->UnitOfMeasurement());
  rows.SetField(u"UpperSpecLimit"_s, data->UpperSpecLimit());
  rows.SetField(u"LowerSpecLimit"_s, data->LowerSpecLimit());
  rows.SetField(u"NominalSpecLimit"_s, data->NominalSpecLimit());
  rows.SetField(u"SubGroupSize"_s, data->SubGroupSize());
  rows.SetField(u"SensitivityValue"_s, 1);
  rows.SetField(u"DetectionPeriod"_s, 1);
  rows.Update();
  return rows.Field(u"ID"_s).toInt();
}
