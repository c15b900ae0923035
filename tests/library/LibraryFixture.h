// A library in a temporary folder or on a server, opened twice: by the test's program and by somebody else.
#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include "data/Statistics.h"
#include "library/Library.h"
#include "library/LibraryWatch.h"
#include "tests/support/Approved.h"
#include "tests/support/Refusal.h"
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
    const auto data = std::make_shared<CData>();
    data->SetDescription(description);
    data->SetUnitOfMeasurement(u"MM"_s);
    data->SetDelimitedInputString(u"9,10,11,10,9,10,11,10,"_s);
    data->SetSubGroupSize(2);
    data->SetUpperSpecLimit(12);
    data->SetLowerSpecLimit(8);
    data->SetNominalSpecLimit(10);
    return data;
  }

  CDataPtr Added(const QString& description) {
    library->Save(*NewDataSet(description), now);
    return library->Read(Number(u"SELECT max(ID) FROM StatData"_s))->data;
  }

  void Execute(const QString& sql) { others->Database().Execute(sql); }
  QVariant Value(const QString& sql) {
    QSqlQuery query = others->Database().Run(u"select"_s, sql);
    return others->Database().NextRow(query) ? query.value(0) : QVariant();
  }
  // The first column, joined.
  QString Joined(const QString& sql) {
    QStringList values;
    QSqlQuery query = others->Database().Run(u"select"_s, sql);
    while (others->Database().NextRow(query)) values << query.value(0).toString();
    return values.join(u',');
  }
  qint64 Number(const QString& sql) { return Value(sql).toLongLong(); }
  QString Values() { return Value(u"SELECT \"Values\" FROM StatData WHERE ID = 1"_s).toString(); }

  // What is done, with what it makes of the rows: in the test's diary.
  void Tell(const QString& what) {
    Approved::Diary::States states;
    for (const QString& table : {u"StatData"_s, u"DeletedStatData"_s}) {
      if (!others->Database().Has(table)) continue;
      QSqlQuery query = others->Database().Run(u"select"_s,
                                               u"SELECT ID, Description, \"Values\", UpperSpecLimit, "
                                               "XBarUCL, XBarMean, LastModified FROM "_s +
                                                   table);
      while (others->Database().NextRow(query)) {
        QStringList fields;
        for (int column = 1; column < 7; ++column) fields << query.value(column).toString();
        const QString row = u"row %1"_s.arg(query.value(0).toString());
        states[table == u"StatData" ? row : row + u" deleted"_s] = fields.join(u" | "_s);
      }
    }
    diary.Step(QString(what).replace(path, u"LIB"_s), states);
  }
  template <class Call>
  void TellRefusal(const QString& what, Call&& call) {
    Tell(what + u": "_s + Refusal(call));
  }

  QStringList Files() const {
    return QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
  }

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

// For what holds of a library of either kind.
enum class Place { File, Server };

class AnyLibraryFixture : public LibraryFixture, public testing::WithParamInterface<Place> {
 protected:
  void SetUp() override {
    if (GetParam() == Place::File) return LibraryFixture::SetUp();
    const QString address = TestServer::NewDatabase();
    if (address.isEmpty()) GTEST_SKIP() << TestServer::missing;
    Start(address);
  }
};

inline std::string NameOf(const testing::TestParamInfo<Place>& place) {
  return place.param == Place::File ? "File" : "Server";
}

#define ON_BOTH(Fixture) \
  INSTANTIATE_TEST_SUITE_P(On, Fixture, testing::Values(Place::File, Place::Server), NameOf)
