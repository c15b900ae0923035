// A library in a temporary folder or on a server, opened twice: by the test's program and by somebody else.
#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include "data/Statistics.h"
#include "library/Library.h"
#include "library/LibraryWatch.h"
#include "tests/support/Approved.h"
#include "tests/support/Figures.h"
#include "tests/support/Files.h"
#include "tests/support/Refusal.h"
#include "tests/support/Rows.h"
#include "tests/support/TestServer.h"

using namespace Qt::StringLiterals;

class LibraryFixture : public testing::Test {
 protected:
  void SetUp() override { Start(folder.filePath(u"plant.kestrel"_s)); }
  void TearDown() override { diary.Expect(); }

  void Start(const QString& place) {
    path = place;
    Library::Create(path);
    library = std::make_unique<Library>(path);
    others = std::make_unique<Library>(path);
  }

  // Eight values in subgroups of 2; limits are calculated at every load.
  static CDataPtr NewDataSet(const QString& description) {
    return DataSetOf(description, u"9,10,11,10,9,10,11,10,"_s, 2);
  }

  CDataPtr Added(const QString& description) {
    library->Save(*NewDataSet(description), now);
    return library->Read(Number(u"SELECT max(ID) FROM StatData"_s))->data;
  }

  void Execute(const QString& sql) { others->Database().Execute(sql); }
  QVariant Value(const QString& sql) { return ValueOf(others->Database(), sql); }
  qint64 Number(const QString& sql) { return Value(sql).toLongLong(); }
  QString Values() { return Value(u"SELECT \"Values\" FROM StatData WHERE ID = 1"_s).toString(); }

  // What stands in the library.
  virtual Approved::Diary::States Standing() {
    Approved::Diary::States states;
    for (const QString& table : {u"StatData"_s, u"DeletedStatData"_s}) {
      if (!others->Database().Has(table)) continue;
      for (const QVariantList& row :
           RowsOf(others->Database(),
                  u"SELECT ID, Description, \"Values\", UpperSpecLimit, XBarUCL, XBarMean, "
                  u"LastModified FROM "_s +
                      table)) {
        QStringList fields = QVariant(row).toStringList();
        const QString name = u"row "_s + fields.takeFirst();
        states[table == u"StatData" ? name : name + u" deleted"_s] = fields.join(u" | "_s);
      }
    }
    for (const Library::Row& row : others->ReadAll())
      if (const auto [first, last] = row.data->LimitsBase(); last > 0)
        states[u"row %1 limits"_s.arg(row.id)] = u"of points %1 to %2"_s.arg(first).arg(last);
    return states;
  }
  // What is done, with what it makes of that: in the test's diary.
  void Tell(const QString& what) { diary.Step(QString(what).replace(path, u"LIB"_s), Standing()); }
  template <class Call>
  void TellRefusal(const QString& what, Call&& call) {
    Tell(what + u": "_s + Refusal(call));
  }

  QStringList Files() const { return EntriesOf(folder.path()); }

  QTemporaryDir folder;
  QString path;
  const QDateTime now{QDate(2024, 2, 29), QTime(13, 45, 59)};
  std::unique_ptr<Library> library;
  std::unique_ptr<Library> others;
  Approved::Diary diary;
};

// A server's news come while events are processed.
inline std::optional<LibraryWatch::Change> News(LibraryWatch& watch) {
  constexpr int longest = 5000;
  std::optional<LibraryWatch::Change> change = watch.Look();
  QElapsedTimer since;
  for (since.start(); !change && !since.hasExpired(longest); change = watch.Look())
    QCoreApplication::processEvents();
  return change;
}

class AnyLibraryFixture : public LibraryFixture, public testing::WithParamInterface<Place> {
 protected:
  void SetUp() override {
    if (GetParam() == Place::File) return LibraryFixture::SetUp();
    const QString address = TestServer::NewDatabase();
    if (address.isEmpty()) GTEST_SKIP() << TestServer::missing;
    Start(address);
  }
};
