// What only a library on a server has: many writers at once, rights, and writes whose arrival is in doubt.
#include <thread>
#include <utility>

#include "tests/library/LibraryFixture.h"

namespace {

class ServerLibraryTest : public LibraryFixture {
 protected:
  void SetUp() override {
    const QString address = TestServer::NewDatabase();
    if (address.isEmpty()) GTEST_SKIP() << TestServer::missing;
    Start(address);
    library->Guard({});
  }
  void TearDown() override { Connection::FaultHook = nullptr; }

  // Has the connection to the server end at the next commit; before, where it has arrived there.
  void LoseCommit(bool arrives) {
    const qint64 process = ValueOf(library->Database(), u"SELECT pg_backend_pid()"_s).toLongLong();
    isLost_ = false;
    Connection::FaultHook = [this, arrives, process](const QString& operation) {
      if (operation != u"commit"_s || std::exchange(isLost_, true)) return;
      if (arrives) library->Database().Run(u"commit"_s, u"COMMIT"_s);
      Value(u"SELECT pg_terminate_backend(%1, 5000)"_s.arg(process));
    };
  }
  bool isLost_ = false;
};

TEST_F(ServerLibraryTest, EveryAppendOfManyWritersIsKept) {
  Added(u"Shaft"_s);
  constexpr int each = 15;
  std::vector<std::thread> writers;
  for (int writer = 0; writer < 4; ++writer)
    writers.emplace_back([this, writer] {
      const auto own = Library::Open(path, {});
      for (int i = 0; i < each; ++i) {
        own->Append(u"shaft"_s, {QString::number(1000 * (writer + 1) + i)}, now);
        own->AddUnit(u"mm %1"_s.arg(i));
      }
    });
  for (std::thread& writer : writers) writer.join();
  const QStringList values = Values().split(u',', Qt::SkipEmptyParts);
  EXPECT_EQ(values.size(), 8 + 4 * each);
  for (int writer = 0; writer < 4; ++writer)
    for (int i = 0, last = 0; i < each; ++i) {
      const auto at = static_cast<int>(values.indexOf(QString::number(1000 * (writer + 1) + i)));
      EXPECT_GT(at, last) << "in their order";
      last = at;
    }
  EXPECT_EQ(Number(u"SELECT count(*) FROM Units WHERE Name LIKE 'mm %'"_s), each) << "each unit once";
}

TEST_F(ServerLibraryTest, AWriteWhoseCommitIsInDoubtIsLookedUp) {
  Added(u"Shaft"_s);
  LoseCommit(true);
  library->Append(u"Shaft"_s, {u"11"_s}, now);
  EXPECT_TRUE(Values().endsWith(u",11,"_s));
  LoseCommit(false);
  EXPECT_TRUE(Refusal<DatabaseError>([&] {
                library->Append(u"Shaft"_s, {u"12"_s}, now);
              }).endsWith(u"nothing was written"_s));
  EXPECT_TRUE(Values().endsWith(u",11,"_s));
  library->Append(u"Shaft"_s, {u"12"_s}, now);
  EXPECT_TRUE(Values().endsWith(u",11,12,"_s));
}

// With the rights of docs/server.md.
TEST_F(ServerLibraryTest, AWriterWritesAndAReaderReads) {
  for (const char* sql : {"GRANT SELECT ON ALL TABLES IN SCHEMA public TO reader, writer",
                          "GRANT INSERT, UPDATE, DELETE ON ALL TABLES IN SCHEMA public TO writer",
                          "GRANT USAGE, SELECT ON ALL SEQUENCES IN SCHEMA public TO writer"})
    Execute(QString::fromLatin1(sql));
  const auto writer = Library::Open(TestServer::As(u"writer"_s, path), {});
  writer->Add(*NewDataSet(u"Shaft"_s), now);
  writer->Append(u"Shaft"_s, {u"10"_s}, now, Library::Limits::AreRenewed);
  writer->Rename(1, u"Axle"_s, now);
  writer->SetNote(*writer->Read(1)->data, 0, {}, u"new tool"_s, u"ann"_s, now);
  writer->Delete(1, now);
  writer->Restore(writer->DeletedDataSets()[0]);
  const auto reader = Library::Open(TestServer::As(u"reader"_s, path), {});
  EXPECT_EQ(reader->ReadAll()[0].description, u"Axle"_s);
  LibraryWatch watch(TestServer::As(u"reader"_s, path));
  EXPECT_TRUE(Refusal([&] { reader->Append(u"Axle"_s, {u"10"_s}, now); }).contains(u"no right"_s));
  writer->Append(u"Axle"_s, {u"10"_s}, now);
  EXPECT_EQ(News(watch)->changed, std::vector<qint64>{1});
}

}  // namespace
