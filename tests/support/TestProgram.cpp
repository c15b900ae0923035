#include "tests/support/TestProgram.h"

#include "tests/support/Figures.h"

std::vector<qint32> RecordedMainScreen::ListedIDs() const {
  std::vector<qint32> ids;
  for (const CDataPtr& data : Globals().gDataCollection) ids.push_back(data->ID());
  return ids;
}

TestProgram::TestProgram() {
  Library::Create(LibraryPath());
  state.gLibrary = std::make_shared<Library>(LibraryPath());
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

void TestProgram::FailAt(const QString& operation) {
  Connection::FaultHook = [operation](const QString& current) {
    if (current == operation) throw DatabaseError(u"the disk is full"_s);
  };
}

CDataPtr TestProgram::NewDataSet(const QString& description) {
  QString values;
  for (int i = 0; i < 40; ++i) values += QString::number(9.5 + (i * 7 % 11) / 10.0) + u',';
  const CDataPtr data = DataSetOf(description, values, 4);
  data->SetSampleQty(40);
  return data;
}

qint32 TestProgram::Insert(const QString& description) const {
  Execute(
      u"INSERT INTO StatData (Description, \"Values\", LastModified, UnitOfMeasurement, UpperSpecLimit, "
      u"LowerSpecLimit, NominalSpecLimit, SubGroupSize, SensitivityValue, DetectionPeriod, HiFlier, LoFlier, "
      u"XBarUCL, XBarLCL, XBarMean, RBarUCL, RBarLCL, RBarMean) VALUES (?, ?, '2024-01-01 00:00:00', 'MM', "
      u"12, 8, 10, 4, 1, 1, 0, 0, 0, 0, 0, 0, 0, 0)"_s,
      {description, NewDataSet(description)->DelimitedInputString()});
  return Rows(u"SELECT max(ID) AS ID FROM StatData"_s)[0][0].toInt();
}
