// The main window on a test's own library, and what a user does with it and sees of it.
#pragma once

#include <QCoreApplication>

#include "core/DataObjectFunctions.h"
#include "core/RegistryFunctions.h"
#include "library/LibraryFile.h"
#include "screens/MainList.h"
#include "screens/frmMain.h"
#include "tests/support/RecordedFileDialogs.h"
#include "tests/support/Walk.h"

inline const auto keyPath = u"Software\\Orvane Labs\\Kestrel"_s;
inline const auto libraryAttached = u"Current Database: StatData.mdb (DB Rev. 2.0)"_s;

// Lets a test look on, or do what a user does, while the program waits.
class WatchedClock : public TurnedClock {
 public:
  std::function<void()> whenSleeping;
  void Sleep(int milliseconds) override {
    TurnedClock::Sleep(milliseconds);
    if (whenSleeping) whenSleeping();
  }
};

class MainScreenFixture : public Walk {
 protected:
  MainScreenFixture() : Walk(u"StatData"_s, [this](Protocol::States& states) { TellOthers(states); }) {
    program.state.gLibrary.reset();
    program.state.gDatabaseOpen = false;
    program.state.clock = &clock;
  }

  // As on a machine whose settings name the library, which holds these data sets.
  void Start(const QStringList& dataSets = {}) {
    for (const QString& name : dataSets) program.Insert(name);
    RegistryFunctions::SetKeyValue(keyPath, u"DatabaseName"_s, Registry::String, program.LibraryPath());
    Open();
  }
  void Open() {
    main = std::make_unique<frmMain>(frmMain::Screens{
        .chart = [this] { opened << u"chart"_s; },
        .editor = [this] { Edited(); },
        .configuration = [this] { opened << u"settings"_s; },
        .about = [this] { opened << u"about"_s; },
        .measurements = [this] { opened << u"measurements"_s; },
        .restore = [this] { inRestore(); },
        .rename = [this] { inRename(); },
        .units = [this] { opened << u"units"_s; },
        .compare = [this](qint32 one, qint32 other) { opened << u"%1 and %2"_s.arg(one).arg(other); }});
    EXPECT_EQ(Enabled(), u"--------") << "boxes of the start may stand over the window";
    ASSERT_TRUE(main->Form_Load());
    main->show();
    QCoreApplication::processEvents();
  }
  void StartLoaded(const QStringList& dataSets = {}) {
    Start(dataSets);
    Fire(*main, "InitTimer");
    protocol.Begin(u"Start"_s, main.get());
  }
  void Edited() {
    opened << (program.state.gAddMode ? u"editor to add"_s : u"editor"_s);
    if (inEditor) inEditor();
  }

  void Add(const QString& name) const {
    const CDataPtr added = TestProgram::NewDataSet(name);
    DataObjectFunctions::SaveDataObjectToDatabase(added);
    DataObjectFunctions::AddDataObjectToSystem(added);
    EXPECT_EQ(added->ID(), 0);
    EXPECT_EQ(Rows().last(), name);
  }

  // What somebody else does, which the window's clock sees.
  void Elsewhere(const QString& sql) {
    Walk::Elsewhere(sql, [this] { Fire(*main, "WatchTimer"); });
  }
  QWidget& Form() const override { return *main; }
  void TellOthers(Protocol::States& states) const {
    states[u"opened"_s] = opened.join(u", "_s);
    states[u"collection"_s] = u"%1, current %2, settings %3"_s.arg(program.state.gDataCollection.size())
                                  .arg(program.state.gCurrentDataID)
                                  .arg(StoredDatabase().section(u'/', -1));
  }
  QAction& Action(const char* name) const { return Get<QAction>(*main, name); }
  MainList& List() const { return Get<MainList>(*main, "ListView1"); }
  QModelIndex At(int row, int column) const { return List().model()->index(row, column); }
  QString Current() const { return List().CurrentDescription(); }
  QString TopRow() const { return List().indexAt({0, 0}).siblingAtColumn(1).data().toString(); }
  QString StateOf(int row) const { return At(row, 0).data(Qt::ToolTipRole).toString(); }
  QString Panel() const { return TextOf(*main, "StatusBar1_1"); }
  QString Summary(const char* name) const { return TextOf(*main, name); }

  QStringList Rows() const {
    QStringList rows;
    for (int i = 0; i < List().model()->rowCount(); ++i) rows << At(i, 1).data().toString();
    return rows;
  }
  QPoint PlaceOf(int row) const { return List().visualRect(At(row, 1)).center(); }
  void ClickRow(int row) const { QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, PlaceOf(row)); }

  // The documented commands in one word: View, Add, Edit, Delete, Exit, the three of the pop-up menu.
  QString Enabled() const {
    QString letters;
    for (const char* name : {"Toolbar1_1", "Toolbar1_2_1", "Toolbar1_2_2", "Toolbar1_2_3", "Toolbar1_5",
                             "menuView", "mnuEdit", "mnuDelete"})
      letters += Action(name).isEnabled() ? u'x' : u'-';
    return letters;
  }

  // A second, empty library in the test's folder.
  QString OtherLibrary() {
    const QString path = program.Path(u"other.kestrel"_s);
    LibraryFile::Create(path,
                        [](Connection& other) { other.Execute(u"INSERT INTO DBRevision VALUES ('2.1')"_s); });
    return path;
  }
  QString CopyOfData(const QString& name) const {
    EXPECT_TRUE(QFile::copy(QStringLiteral(KESTREL_TEST_DATA "/access/") + name, program.Path(name)));
    return program.Path(name);
  }

  // The Database Connection command, with that file chosen.
  void ChooseFile(const QString& path, Answers answers = {}) {
    files.Expect(path);
    Trigger("Toolbar1_3_2", answers);
  }
  static QString StoredDatabase() {
    return RegistryFunctions::GetKeyValue(keyPath, u"DatabaseName"_s, Registry::String);
  }

  WatchedClock clock;
  RecordedFileDialogs files;
  QStringList opened;
  std::function<void()> inEditor, inRestore, inRename;
  std::unique_ptr<frmMain> main;
};
