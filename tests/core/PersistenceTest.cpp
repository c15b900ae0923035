// What a data set keeps on its way into the table and back.
#include <QTimer>

#include "core/CollectionWatch.h"
#include "core/DataObjectFunctions.h"
#include "platform/system/LoginName.h"
#include "tests/support/Approved.h"
#include "tests/support/Figures.h"
#include "tests/support/TestProgram.h"

using namespace DataObjectFunctions;

namespace {

class PersistenceTest : public testing::Test {
 protected:
  CDataPtr Loaded(qint32 id) {
    CDataPtr data;
    EXPECT_TRUE(InitializeCDataCollection());
    EXPECT_TRUE(GetDataObjectByID(id, data));
    return data;
  }

  TestProgram program;
  std::vector<CDataPtr>& collection = program.state.gDataCollection;
};

TEST_F(PersistenceTest, EveryFigureHasItsOwnColumnAndComesBack) {
  const CDataPtr saved = std::make_shared<CData>(DistinctData());
  saved->SetDescription(u"Bore Ø 74"_s);
  saved->SetUpperSpecLimit(12.123456);
  saved->SetHiFlier(99.123456789);
  saved->SetLoFlier(-1);
  saved->SetSubGroupSize(4);
  saved->SetSensitivityValue(2);
  saved->SetDetectionPeriod(0);
  saved->SetDelimitedInputString(TestProgram::NewDataSet({})->DelimitedInputString());
  ASSERT_TRUE(SaveDataObjectToDatabase(saved));
  EXPECT_TRUE(saved->IsDataValid());
  EXPECT_EQ(saved->LastModified(), u"2024-02-29 13:45:59");
  Figures figures = FiguresOf(*saved);
  figures[u"UpperSpecLimit"_s] = 12.1235;  // limits are stored as read, to the precision; fliers in full
  Figures stored;
  for (const QVariantList& column :
       program.Rows(u"SELECT name FROM pragma_table_info('StatData') WHERE name <> 'ID'"_s)) {
    const QString name = column[0].toString(), figure = name == u"Values" ? u"DelimitedInputString"_s : name;
    stored[figure] = figures[figure];
    EXPECT_EQ(program.Rows(u"SELECT \"%1\" FROM StatData"_s.arg(name))[0][0], stored[figure])
        << name.toStdString();
  }
  EXPECT_EQ(stored.size(), 18);
  const CDataPtr loaded = Loaded(1);
  ASSERT_TRUE(loaded);
  EXPECT_EQ(loaded->SampleQty(), 40);
  ExpectFigures(*loaded, stored);
}

TEST_F(PersistenceTest, SavingAgainKeepsTheDescriptionAndTheRow) {
  const qint32 id = program.Insert(u"OLD"_s);
  const CDataPtr data = Loaded(id);
  data->SetDescription(u"NEW"_s);
  data->SetDelimitedInputString(u"1,2,3,"_s);
  ASSERT_TRUE(SaveDataObjectToDatabase(data));
  EXPECT_EQ(program.Rows(u"SELECT ID, Description, \"Values\" FROM StatData"_s),
            std::vector<QVariantList>({{id, u"OLD"_s, u"1,2,3,"_s}}));
  EXPECT_EQ(collection.size(), 1U);
}

TEST_F(PersistenceTest, ANoteIsWrittenInTheUsersNameAndNewsToOthers) {
  const CDataPtr data = Loaded(program.Insert(u"A"_s));
  CollectionWatch watch;
  while (watch.Take()) continue;
  ASSERT_EQ(SetNote(*data, 1, {}, u"new tool"_s)->outcome, Library::Noted::Outcome::Written);
  EXPECT_TRUE(watch.Take()->others);
  const Trace::Record record = TraceOf(*data);
  ASSERT_EQ(record.notes.size(), 1U);
  EXPECT_EQ(record.notes[0].author, LoginName());
  EXPECT_FALSE(LoginName().isEmpty());
  EXPECT_EQ(collection.front(), data) << "the data set is the same";
}

TEST_F(PersistenceTest, LoadingForgivesNullsAndAMissingComma) {
  const qint32 id = program.Insert(u"A"_s);
  program.Execute(
      u"UPDATE StatData SET SensitivityValue = NULL, DetectionPeriod = NULL, UnitOfMeasurement = NULL, "
      u"LastModified = NULL, \"Values\" = rtrim(\"Values\", ',')"_s);
  const CDataPtr data = Loaded(id);
  EXPECT_EQ(data->SensitivityValue(), 0);
  EXPECT_EQ(data->DetectionPeriod(), 0);
  EXPECT_EQ(data->UnitOfMeasurement(), QString());
  EXPECT_EQ(data->SampleQty(), 40);
  program.Execute(u"UPDATE StatData SET SubGroupSize = NULL"_s);
  EXPECT_EQ(Loaded(id)->SubGroupSize(), 0);
}

TEST_F(PersistenceTest, ABadRowIsNamedAndTheOthersAreThere) {
  EXPECT_FALSE(InitializeCDataCollection()) << "an empty table";
  for (const QString& name : {u"GOOD"_s, u"BAD"_s, u"BEHIND"_s}) program.Insert(name);
  for (const QString& assignment : {u"XBarUCL = NULL"_s, u"XBarUCL = 'ten'"_s, u"SubGroupSize = 40000"_s}) {
    program.Execute(u"UPDATE StatData SET XBarUCL = 0, SubGroupSize = 4"_s);
    program.Execute(u"UPDATE StatData SET %1 WHERE ID = 2"_s.arg(assignment));
    program.boxes.Expect();
    EXPECT_TRUE(InitializeCDataCollection());
    EXPECT_EQ(collection.size(), 2U);
  }
  for (int i = 0; i < 9; ++i) program.Insert(u"MORE"_s);
  program.Execute(u"UPDATE StatData SET XBarUCL = NULL"_s);
  program.boxes.Expect();
  EXPECT_FALSE(InitializeCDataCollection());
  Approved::Expect(program.boxes.TakeAll().replaceInStrings(u"\r\n"_s, u"|"_s));
}

TEST_F(PersistenceTest, AllCoresLoadWhatOneDoes) {
  Transaction transaction(program.state.gLibrary->Database());
  for (int i = 200; i > 0; --i) {
    const CDataPtr data = TestProgram::NewDataSet(u"SET %1"_s.arg(i));
    data->SetDelimitedInputString(data->DelimitedInputString().repeated(i % 50 + 1));
    ASSERT_TRUE(SaveDataObjectToDatabase(data));
  }
  transaction.Commit();
  EXPECT_TRUE(InitializeCDataCollection());
  std::vector<Library::Row> rows = program.state.gLibrary->ReadAll();
  ASSERT_EQ(rows.size(), 200U);
  for (std::size_t i = 0; i < rows.size(); ++i)
    EXPECT_EQ(FiguresOf(*collection.at(i)), FiguresOf(*rows[i].data));
  // A refusal by the engine, a row that cannot be read: each is named, and the others are there.
  program.Execute(
      u"UPDATE StatData SET SubGroupSize = iif(ID = 100, 21, 4), XBarUCL = iif(ID = 150, NULL, 0)"_s);
  rows = program.state.gLibrary->ReadAll();
  EXPECT_EQ(std::ranges::count_if(rows, [](const auto& row) { return row.failure.has_value(); }), 2);
  EXPECT_EQ(rows[99].failure->GetKind(), Error::Kind::BadInput);
  EXPECT_EQ(rows[149].failure->Text(), u"Data set \"SET 51\" (ID 150): XBarUCL is Null."_s);
}

TEST_F(PersistenceTest, ALoadStopsWhereAnotherOneOvertakesIt) {
  program.Insert(u"A"_s);
  program.Insert(u"B"_s);
  bool inner = false;
  QTimer::singleShot(0, [&] { inner = InitializeCDataCollection(); });
  EXPECT_FALSE(InitializeCDataCollection());
  EXPECT_TRUE(inner);
  EXPECT_EQ(collection.size(), 2U) << "no data set twice";
}

TEST_F(PersistenceTest, LookingUpAndRemoving) {
  collection.assign(40'000, TestProgram::NewDataSet(u"MANY"_s));
  for (const qint32 id : {7, 8, 7}) {
    collection.push_back(TestProgram::NewDataSet(u"ID %1"_s.arg(id)));
    collection.back()->SetID(id);
  }
  CDataPtr data = collection[0];
  EXPECT_TRUE(GetDataObjectByID(9, data));
  EXPECT_FALSE(data);
  EXPECT_EQ(GetDataObjectDescription(8), u"ID 8"_s);
  EXPECT_EQ(GetDataObjectDescription(9), QString());
  EXPECT_EQ(GetCurrentDataObjectID(u"ID 8"_s), 8);
  EXPECT_EQ(GetCurrentDataObjectID(u"id 8"_s), 0);
  EXPECT_TRUE(DeleteDataObjectByID(7));
  EXPECT_EQ(collection.size(), 40'002U) << "the first of the two only";
  EXPECT_TRUE(ModifyDataObjectInSystem(collection[40'000]));
  EXPECT_TRUE(DeleteDataObjectfromListview(8));
  EXPECT_EQ(program.screen.calls, QStringList({u"UpdateListRow ID 8"_s, u"RemoveListRow 8"_s}));
}

}  // namespace
