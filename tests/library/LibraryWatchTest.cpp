// What a look at a library tells of what others have done to it.
#include "library/LibraryWatch.h"

#include "tests/library/LibraryFixture.h"

namespace {

using Ids = std::vector<qint64>;

void Expect(LibraryWatch& watch, const Ids& changed, const Ids& deleted) {
  const auto change = News(watch);
  ASSERT_TRUE(change);
  EXPECT_EQ(change->changed, changed);
  EXPECT_EQ(change->deleted, deleted);
  QCoreApplication::processEvents();
  const auto next = watch.Look();
  EXPECT_FALSE(next && !next->others) << "each change is told once";
}

class AnyLibraryWatchTest : public AnyLibraryFixture {};
class LibraryWatchTest : public LibraryFixture {};

ON_BOTH(AnyLibraryWatchTest);

TEST_P(AnyLibraryWatchTest, TellsWhichRowsHaveChanged) {
  Added(u"One"_s);
  Added(u"Two"_s);
  LibraryWatch watch(path);
  EXPECT_FALSE(watch.Look());
  others->Append(u"Two"_s, {u"1"_s}, now);
  Expect(watch, {2}, {});
  Execute(u"UPDATE StatData SET XBarUCL = XBarUCL"_s);  // an older program writes the same
  Expect(watch, {1, 2}, {});
  others->Delete(1, now);
  Expect(watch, {}, {1});
  others->Restore(others->DeletedDataSets()[0]);
  Added(u"Three"_s);
  Expect(watch, {1, 3}, {});
  others->AddUnit(u"MM"_s);
  EXPECT_TRUE(News(watch)->others);
  if (GetParam() == Place::File) return;
  int heard = 0;
  watch.Heard = [&] { ++heard; };
  others->Append(u"Two"_s, {u"1"_s}, now);
  Expect(watch, {2}, {});
  EXPECT_EQ(heard, 1);
  TestServer::Restart();
  others->Append(u"Two"_s, {u"1"_s}, now);
  Expect(watch, {2}, {});
}

// A library that no program with versions has written to yet.
TEST_F(LibraryWatchTest, ComparesContentsWhereThereAreNoVersions) {
  const auto insert = [&](int id) {
    Execute(u"INSERT INTO StatData (ID, Description, \"Values\") VALUES (%1, 'D%1', '1,')"_s.arg(id));
  };
  insert(1);
  insert(2);
  LibraryWatch watch(path);
  Execute(u"UPDATE StatData SET \"Values\" = '1,2,' WHERE ID = 2"_s);
  insert(3);
  Expect(watch, {2, 3}, {});
  Execute(u"DELETE FROM StatData WHERE ID = 3"_s);
  Expect(watch, {}, {3});
  // The first write makes the versions; what came before it is not lost.
  Execute(u"UPDATE StatData SET UnitOfMeasurement = 'MM' WHERE ID = 1"_s);
  library->Save(*NewDataSet(u"New"_s), now);
  Expect(watch, {1, 4}, {});
  Execute(u"UPDATE StatData SET UnitOfMeasurement = 'CM' WHERE ID = 1"_s);
  Expect(watch, {1}, {});
}

TEST_F(LibraryWatchTest, ALockIsNotWaitedForAndLosesNothing) {
  Added(u"One"_s);
  LibraryWatch watch(path);
  library->Append(u"One"_s, {u"1"_s}, now);
  library->Database().Run(u"lock"_s, u"BEGIN EXCLUSIVE"_s);
  EXPECT_FALSE(watch.Look());
  LibraryWatch late(path);
  EXPECT_FALSE(late.Look());
  library->Database().Run(u"lock"_s, u"COMMIT"_s);
  Expect(watch, {1}, {});
  EXPECT_TRUE(late.Look()->replaced) << "what came before it began is not known";
  EXPECT_FALSE(late.Look());
}

TEST_F(LibraryWatchTest, AnotherFileInItsPlaceIsToldAndOneThatIsGoneOnce) {
  LibraryWatch watch(path);
  const QString other = folder.filePath(u"other"_s);
  Library::Create(other);
  ASSERT_TRUE(QFile::rename(path, path + u".old"_s));
  EXPECT_FALSE(watch.Look()->trouble.isEmpty());
  EXPECT_FALSE(watch.Look());
  ASSERT_TRUE(QFile::rename(other, path));
  EXPECT_TRUE(watch.Look()->replaced);
  EXPECT_FALSE(watch.Look());
}

}  // namespace
