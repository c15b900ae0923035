// The main window on a test's own library, and what a user does with it and sees of it.
#pragma once

#include <gtest/gtest.h>

#include <QAction>
#include <QCoreApplication>
#include <QFile>
#include <QLabel>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <functional>
#include <memory>

#include "core/Library.h"
#include "core/RegistryFunctions.h"
#include "screens/frmMain.h"
#include "tests/support/RecordedFileDialogs.h"
#include "tests/support/TestProgram.h"

inline const auto keyPath = QStringLiteral("Software\\Orvane Labs\\Kestrel");
inline const auto noDatabase = QStringLiteral("Current Database: <none>");
inline const auto libraryAttached = QStringLiteral("Current Database: StatData.mdb (DB Rev. 2.0)");

// Lets a test look on, or do what a user does, while the program waits.
class WatchedClock : public TurnedClock {
 public:
  std::function<void()> whenSleeping;
  void Sleep(int milliseconds) override {
    TurnedClock::Sleep(milliseconds);
    if (whenSleeping) whenSleeping();
  }
};

class MainScreenFixture : public testing::Test {
 protected:
  MainScreenFixture() {
    program.state.gConnection.reset();
    program.state.gDatabaseOpen = false;
    program.state.clock = &clock;
  }

  // As on a machine whose settings name the library.
  void Start() {
    RegistryFunctions::SetKeyValue(keyPath, QStringLiteral("DatabaseName"), Registry::String,
                                   program.LibraryPath());
    Open();
  }

  void Open() {
    main = std::make_unique<frmMain>(
        frmMain::Screens{.chart = [this] { opened << QStringLiteral("chart"); },
                         .editor = [this] { Edited(); },
                         .configuration = [this] { opened << QStringLiteral("settings"); },
                         .about = [this] { opened << QStringLiteral("about"); }});
    EXPECT_EQ(Enabled(), QStringLiteral("--------")) << "boxes of the start may stand over the window";
    ASSERT_TRUE(main->Form_Load());
    main->show();
    QCoreApplication::processEvents();
  }

  void StartLoaded() {
    Start();
    Tick("InitTimer");
  }

  void Edited() {
    opened << (program.state.gAddMode ? QStringLiteral("editor to add") : QStringLiteral("editor"));
    if (inEditor) inEditor();
  }

  template <class T>
  T& Find(const char* name) const {
    T* found = main->findChild<T*>(QString::fromLatin1(name));
    if (!found) throw std::runtime_error(name);
    return *found;
  }
  void Tick(const char* timer) const { QMetaObject::invokeMethod(&Find<QTimer>(timer), "timeout"); }
  QAction& Action(const char* name) const { return Find<QAction>(name); }
  QTreeWidget& List() const { return Find<QTreeWidget>("ListView1"); }
  QString Panel() const { return Find<QLabel>("StatusBar1_1").text(); }
  QString Summary(const char* name) const { return Find<QLabel>(name).text(); }

  QStringList Rows() const {
    QStringList rows;
    for (int i = 0; i < List().topLevelItemCount(); ++i) rows << List().topLevelItem(i)->text(1);
    return rows;
  }

  void ClickRow(int row, Qt::MouseButton button = Qt::LeftButton) const {
    QTest::mouseClick(List().viewport(), button, {}, PlaceOf(row));
  }
  QPoint PlaceOf(int row) const {
    const QTreeWidgetItem* item = List().topLevelItem(row);
    return List().visualItemRect(item).center();
  }

  // The documented commands in one word: View, Add, Edit, Delete, Exit, the three of the pop-up menu.
  QString Enabled() const {
    QString letters;
    for (const char* name : {"Toolbar1_1", "Toolbar1_2_1", "Toolbar1_2_2", "Toolbar1_2_3", "Toolbar1_5",
                             "menuView", "mnuEdit", "mnuDelete"})
      letters += Action(name).isEnabled() ? u'x' : u'-';
    return letters;
  }

  static void ExpectBox(const MessageBox::Request& box, const QString& text, const QString& title,
                        MessageBox::Icon icon, MessageBox::Buttons buttons) {
    EXPECT_EQ(box.text, text);
    EXPECT_EQ(box.title, title);
    EXPECT_EQ(box.icon, icon);
    EXPECT_EQ(box.buttons, buttons);
  }

  // A second library in the test's folder, with one data set.
  QString OtherLibrary() {
    const QString path = program.Path(QStringLiteral("other.kestrel"));
    Library::Create(path, [](Connection& other) {
      other.Execute(QStringLiteral("INSERT INTO DBRevision VALUES ('2.1')"));
    });
    return path;
  }

  QString CopyOfData(const char* name) const {
    const QString path = program.Path(QString::fromLatin1(name));
    EXPECT_TRUE(QFile::copy(QStringLiteral(KESTREL_TEST_DATA "/access/") + QString::fromLatin1(name), path));
    return path;
  }

  // The Database Connection command, with that file chosen.
  void Choose(const QString& path) {
    files.Expect(path);
    Action("Toolbar1_3_2").trigger();
  }

  QString StoredDatabase() const {
    return RegistryFunctions::GetKeyValue(keyPath, QStringLiteral("DatabaseName"), Registry::String);
  }

  TestProgram program;
  WatchedClock clock;
  RecordedFileDialogs files;
  QStringList opened;
  std::function<void()> inEditor;
  std::unique_ptr<frmMain> main;
};
