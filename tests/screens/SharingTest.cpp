// The main window beside others who work on the same library, and a second start of the program. The protocol
// of each walk is approved.
#include <QTreeWidget>

#include "core/DataObjectFunctions.h"
#include "screens/DataEditor.h"
#include "screens/RenameForm.h"
#include "screens/RestoreForm.h"
#include "tests/screens/MainScreenFixture.h"

namespace {

class SharingTest : public MainScreenFixture {
 protected:
  // The editor over the main window, on the current data set; `act` is what happens meanwhile.
  void WithEditor(const std::function<void(DataEditor&)>& act) {
    inEditor = [this, act] {
      DataEditor editor(main.get());
      editor.open();
      QCoreApplication::processEvents();
      protocol.Begin(u"The editor"_s, main.get());
      act(editor);
    };
    Trigger("Toolbar1_2_2");
  }
  void SaveIn(const DataEditor& editor, Answers answers) {
    Step(
        u"Save"_s, [&] { Get<QAction>(editor, "Toolbar1_1").trigger(); }, answers);
  }
  // A click in the question that comes up next, after a look at it.
  void InConflict(const char* button) {
    InNextWindow([this, button](QWidget& question) {
      protocol.Step(u"the question: "_s + TextOf(question, "lblQuestion"));
      Click(question, button);
    });
  }
  // As a script does it.
  void AppendElsewhere(const QString& name, const QStringList& values) {
    Library::Open(program.LibraryPath(), {})->Append(name, values, clock.now);
    Tick("WatchTimer");
  }
  void RenameElsewhere(const QString& name, const QString& other) const {
    Library::Open(program.LibraryPath(), {})->Rename(name, other, clock.now);
  }
  void Move(const QString& from, const QString& to) const {
    QFile::remove(to);
    ASSERT_TRUE(QFile::rename(from, to));
  }
};

TEST_F(SharingTest, AFileInTheLibrarysPlaceIsRead) {
  StartLoaded({u"Bore"_s, u"Shaft"_s});
  Move(OtherLibrary(), program.LibraryPath());
  Tick("WatchTimer");
  program.Insert(u"PIN"_s);
  Tick("WatchTimer");
  Tick("NewsTimer");
  // While nothing can be read that is said as long as it is so, and what was read stays.
  const QString aside = program.Path(u"aside"_s);
  Move(program.LibraryPath(), aside);
  const auto tell = [this](const char* timer) {
    Fire(*main, timer);
    EXPECT_EQ(Rows(), QStringList{u"PIN"_s});
    return Panel();
  };
  for (const char* timer : {"WatchTimer", "NewsTimer", "WatchTimer"})
    EXPECT_TRUE(tell(timer).contains(u"there is no such file"_s)) << Panel().toStdString();
  WriteFile(program.LibraryPath(), "a shopping list");
  EXPECT_TRUE(tell("WatchTimer").contains(u"is not a database"_s)) << Panel().toStdString();
  Move(aside, program.LibraryPath());
  Tick("WatchTimer");
  Elsewhere(u"DELETE FROM StatData"_s);  // it is watched from now on
}

TEST_F(SharingTest, WhatCannotBeReadIsNamedAndTheRestIsUsable) {
  const auto readAgain = [this](const QString& sql, Answers answers) {
    program.Execute(sql);
    Press(Qt::Key_F5, answers);
    protocol.Step(List().accessibleDescription());
  };
  Start({u"Bore"_s, u"Shaft"_s});
  protocol.Begin(u"Start"_s, main.get());
  program.Execute(u"UPDATE StatData SET XBarUCL = NULL WHERE Description = 'Bore'"_s);
  Tick("InitTimer", {Answer::Ok});
  readAgain(u"UPDATE StatData SET XBarUCL = NULL"_s, {Answer::Ok});
  program.Execute(u"ALTER TABLE StatData RENAME TO Elsewhere"_s);
  program.boxes.Expect(u"no such table");
  QTest::keyClick(main.get(), Qt::Key_F5);
  EXPECT_EQ(Enabled(), u"-x--x---");
  EXPECT_TRUE(List().accessibleDescription().contains(u"no such table"_s));
  program.Execute(u"ALTER TABLE Elsewhere RENAME TO StatData"_s);
  program.Insert(u"PIN"_s);
  readAgain(u"UPDATE StatData SET XBarUCL = 0"_s, {});
  // The same while it is open, by somebody else's hand.
  WithEditor(
      [&](DataEditor&) { Elsewhere(u"UPDATE StatData SET XBarUCL = NULL WHERE Description = 'Bore'"_s); });
  Elsewhere(u"UPDATE StatData SET XBarUCL = 0"_s);
}

// Once a save on a locked library brought two boxes, each after two seconds.
TEST_F(SharingTest, ALockIsToldOnceAndNothingLooksSaved) {
  StartLoaded({u"Bore"_s});
  program.state.gLibrary->Database().SetLockWait(0);
  Connection other;
  other.OpenWith(program.LibraryPath());
  other.Run(u"lock"_s, u"BEGIN IMMEDIATE"_s);
  const CDataPtr before = program.state.gDataCollection.at(0);
  const QString modified = before->LastModified();
  WithEditor([&](DataEditor& editor) {
    Enter(editor, "txtUSL", u"13"_s);
    SaveIn(editor, {Answer::Ok});
    program.boxes.Expect(Answer::No);
    editor.close();
  });
  EXPECT_EQ(before->LastModified(), modified);
  Step(u"append"_s, [&] { DataObjectFunctions::AppendToDataObject(before, {u"1"_s}); }, {Answer::Ok});
  EXPECT_EQ(before->SampleQty(), 40);
  const CDataPtr added = TestProgram::NewDataSet(u"NEW"_s);
  Step(u"add"_s, [&] { DataObjectFunctions::SaveDataObjectToDatabase(added); }, {Answer::Ok});
  Trigger("Toolbar1_2_3", {Answer::Yes, Answer::Ok});
}

TEST_F(SharingTest, AnOpenEditorKeepsWhatWasTypedAndSavesBoth) {
  StartLoaded({u"Bore"_s});
  WithEditor([&](DataEditor& editor) {
    Enter(editor, "txtUSL", u"13"_s);
    AppendElsewhere(u"Bore"_s, {u"9.5"_s, u"10.5"_s, u"10.5"_s, u"10.25"_s});
    SaveIn(editor, {Answer::Ok});
    Tick("WatchTimer");  // what it has written itself is no news
    program.Execute(u"UPDATE StatData SET LowerSpecLimit = 7"_s);
    PressOn(editor, Qt::Key_F5);
  });
}

TEST_F(SharingTest, AConflictShowsBothVersionsAndAsks) {
  StartLoaded({u"Bore"_s});
  WithEditor([&](DataEditor& editor) {
    Enter(editor, "txtUSL", u"13"_s);
    program.Execute(u"UPDATE StatData SET UpperSpecLimit = 14, NominalSpecLimit = 11"_s);
    InConflict("cmdCancel");
    SaveIn(editor, {});
    InConflict("cmdMine");
    SaveIn(editor, {Answer::Ok});
    for (const char* box : {"txtUSL", "txtHiFlier"}) Enter(editor, box, u"15"_s);
    program.Execute(u"UPDATE StatData SET UpperSpecLimit = 16, HiFlier = 17, LoFlier = 4"_s);
    InConflict("cmdTheirs");
    SaveIn(editor, {});
    auto& raw = Get<QPlainTextEdit>(editor, "txtRawData");
    raw.moveCursor(QTextCursor::Start);
    raw.insertPlainText(u"7\n"_s);
    program.Execute(u"UPDATE StatData SET \"Values\" = '8' || substr(\"Values\", 4)"_s);
    InConflict("cmdCancel");
    SaveIn(editor, {});
  });
}

TEST_F(SharingTest, ADeletedDataSetIsAddedOnlyWhereTheUserWantsIt) {
  StartLoaded({u"Bore"_s, u"Shaft"_s});
  WithEditor([&](DataEditor& editor) {
    Enter(editor, "txtUSL", u"13"_s);
    Elsewhere(u"DELETE FROM StatData WHERE Description = 'Bore'"_s);
    SaveIn(editor, {Answer::No});
    SaveIn(editor, {Answer::Yes, Answer::Ok});  // a number is never given twice
    // Deleted once more, and saved before the main window has looked.
    program.Execute(u"DELETE FROM StatData WHERE ID = 3"_s);
    Enter(editor, "txtUSL", u"12.5"_s);
    SaveIn(editor, {Answer::Yes, Answer::Ok});
    Tick("WatchTimer");
    Enter(editor, "txtUSL", u"14"_s);
    SaveIn(editor, {Answer::Ok});
  });
  EXPECT_EQ(program.state.gDataCollection.at(1)->ID(), 4);
}

TEST_F(SharingTest, WhatWasDeletedIsRestored) {
  StartLoaded({u"Bore"_s, u"Shaft"_s});
  Trigger("Toolbar1_2_3", {Answer::Yes, Answer::No});
  program.Insert(u"bore"_s);
  inRestore = [this] {
    RestoreForm form(main.get());
    form.open();
    protocol.Step(u"the form"_s);
    EXPECT_FALSE(Get<QTreeWidget>(form, "listDeleted").topLevelItem(0)->icon(3).isNull());
    PressOn(form, Qt::Key_Return);
    Enter(form, "txtName", u"Bore 2"_s);
    PressOn(form, Qt::Key_Return);  // back at once, in its old place
  };
  Trigger("Toolbar1_2_5");
  Trigger("Toolbar1_2_3", {Answer::Yes, Answer::No});
  inRestore = [this] {
    RestoreForm form(main.get());
    form.open();
    auto& list = Get<QTreeWidget>(form, "listDeleted");
    const QPoint place = list.visualItemRect(list.topLevelItem(0)).center();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place);
    Step(u"a double click"_s, [&] { QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, place); });
  };
  Trigger("Toolbar1_2_5");
}

TEST_F(SharingTest, ADataSetIsRenamedHereAndElsewhere) {
  StartLoaded({u"Bore"_s, u"Shaft"_s});
  ClickRow(1);
  inRename = [this] {
    RenameForm form(main.get());
    form.open();
    protocol.Step(u"the form"_s);
    for (const QString& name : {u" "_s, u"bore"_s, u" Axle "_s}) {
      Enter(form, "txtName", name);
      PressOn(form, Qt::Key_Return);
    }
  };
  Press(Qt::Key_F2);
  WithEditor([&](DataEditor& editor) {
    Enter(editor, "txtUSL", u"13"_s);
    RenameElsewhere(u"Axle"_s, u"PIN"_s);
    Tick("WatchTimer");
    RenameElsewhere(u"PIN"_s, u"BOLT"_s);
    SaveIn(editor, {Answer::Ok});  // before the main window has looked
    EXPECT_EQ(program.state.gDataCollection.at(1)->UpperSpecLimit(), 13);
  });
  inRename = [this] {
    RenameForm form(main.get());
    form.open();
    Elsewhere(u"DELETE FROM StatData WHERE Description = 'BOLT'"_s);
  };
  Trigger("Toolbar1_2_6");
}

TEST_F(SharingTest, ASecondStartHandsItsLibraryOverForThisRun) {
  StartLoaded({u"Bore"_s});
  const QString other = OtherLibrary();
  const auto show = [this](const QString& path) {
    Step(u"show "_s + path, [&] { main->ShowLibrary(path); });
  };
  show({});
  show(program.LibraryPath());  // nothing to do but to show the window
  show(other);
  Tick("HandOverTimer");
  Tick("InitTimer");
  show(program.Path(u"nowhere.db"_s));
  Tick("HandOverTimer", {Answer::Ok});
  EXPECT_EQ(program.state.gDatabaseForThisRun, other);
}

TEST_F(SharingTest, ALibraryHandedOverWaitsForWhatIsNotSaved) {
  StartLoaded({u"Bore"_s});
  const QString other = OtherLibrary();
  WithEditor([&](DataEditor& editor) {
    Enter(editor, "txtUSL", u"13"_s);
    main->ShowLibrary(other);
    Tick("HandOverTimer", {Answer::Cancel});
    Tick("NewsTimer");
    Tick("HandOverTimer");  // is not asked again
    main->ShowLibrary(other);
    Tick("HandOverTimer", {Answer::No});
    EXPECT_FALSE(editor.isVisible());
  });
  Tick("HandOverTimer");
}

}  // namespace
