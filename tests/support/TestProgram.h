// A running program for one test: its state on a fresh library in a temporary folder, with settings in
// memory, a clock that the test turns, a main screen that only records, and scripted answers to message
// boxes.
#pragma once

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "core/Globals.h"
#include "tests/support/Files.h"
#include "tests/support/RecordedMessageBoxes.h"
#include "tests/support/Rows.h"

using namespace Qt::StringLiterals;
using MessageBox::Answer;

// Stands still unless turned; sleeping turns it.
class TurnedClock : public Clock {
 public:
  qint32 ticks = 1000;
  QDateTime now{QDate(2024, 2, 29), QTime(13, 45, 59)};

  void Turn(int milliseconds) {
    ticks += milliseconds;
    now = now.addMSecs(milliseconds);
  }
  qint32 GetTickCount() override { return ticks; }
  void Sleep(int milliseconds) override { Turn(milliseconds); }
  QDateTime Now() override { return now; }
};

// Notes each call as its name and what it was given.
class RecordedMainScreen : public MainScreen {
 public:
  QStringList calls;
  QString panel;          // the database panel's text
  QStringList passwords;  // that the user gives, one after the other

  void SetDatabasePanelText(const QString& text) override { panel = text; }
  void EnableLoadTimer() override { calls << QStringLiteral("EnableLoadTimer"); }
  void ReadLibraryNews() override {}
  void SetupMainFormDisplay() override { calls << QStringLiteral("SetupMainFormDisplay"); }
  void AddListRow(const CData& data) override { calls << QStringLiteral("AddListRow ") + data.Description(); }
  void UpdateListRow(const CData& data) override {
    calls << QStringLiteral("UpdateListRow ") + data.Description();
  }
  void SelectListRow(qint32 id) override { calls << QStringLiteral("SelectListRow %1").arg(id); }
  void RemoveListRow(qint32 id) override { calls << QStringLiteral("RemoveListRow %1").arg(id); }
  bool AskPassword(const QString& address, const QString& why) override {
    calls << QStringLiteral("AskPassword ") + why;
    if (passwords.isEmpty()) return false;
    Connection::UsePassword(address, passwords.takeFirst());
    return true;
  }
  std::vector<qint32> ListedIDs() const override;  // of the collection, in its order
};

class TestProgram {
 public:
  TestProgram();  // installs the state; the library is open
  ~TestProgram();
  TestProgram(const TestProgram&) = delete;
  TestProgram& operator=(const TestProgram&) = delete;

  RecordedMessageBoxes boxes;
  QTemporaryDir folder;
  TurnedClock clock;
  MemoryRegistry registry;
  RecordedMainScreen screen;
  ProgramState state;

  QString Path(const QString& fileName) const { return folder.filePath(fileName); }
  QString LibraryPath() const { return Path(QStringLiteral("StatData.mdb")); }

  // Runs a statement on the library, or another file, as another program would.
  void Execute(const QString& sql, const QVariantList& values = {}) const {
    RunSql(LibraryPath(), sql, values);
  }
  std::vector<QVariantList> Rows(const QString& sql, const QString& path = {}) const {
    return RowsOf(path.isEmpty() ? LibraryPath() : path, sql);
  }

  // Has each such operation on a database fail from now on; an empty name: none.
  static void FailAt(const QString& operation);

  // A data set that passes every check, not saved yet: 40 values around 10 in subgroups of 4.
  static CDataPtr NewDataSet(const QString& description);

  // Adds it to the table, and gives its ID there.
  qint32 Insert(const QString& description) const;

 private:
  ProgramState* previous_;
};
