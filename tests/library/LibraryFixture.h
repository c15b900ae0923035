// A library in a temporary folder, opened twice: by the test's program and by somebody else.
#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "data/Statistics.h"
#include "library/Library.h"

using namespace Qt::StringLiterals;

class LibraryFixture : public testing::Test {
 protected:
  LibraryFixture() {
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
  qint64 Number(const QString& sql) { return Value(sql).toLongLong(); }
  QString Values() { return Value(u"SELECT \"Values\" FROM StatData WHERE ID = 1"_s).toString(); }

  QStringList Files() const {
    return QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
  }

  QTemporaryDir folder;
  const QString path = folder.filePath(u"plant.kestrel"_s);
  const QDateTime now{QDate(2024, 2, 29), QTime(13, 45, 59)};
  std::unique_ptr<Library> library;
  std::unique_ptr<Library> others;
};
