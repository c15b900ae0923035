// The main window beside others who work on the same library, and a second start of the program.
#include <QTableWidget>
#include <QTreeWidget>

#include "core/DataObjectFunctions.h"
#include "screens/DataEditor.h"
#include "screens/RenameForm.h"
#include "screens/RestoreForm.h"
#include "tests/screens/MainScreenFixture.h"

namespace {

const auto otherAttached = u"Current Database: other.kestrel (DB Rev. 2.1)"_s;

class SharingTest : public MainScreenFixture {
 protected:
  // The editor over the main window, on the current data set; `act` is what happens meanwhile.
  void WithEditor(const std::function<void(DataEditor&)>& act) {
    inEditor = [this, act] {
      DataEditor editor(main.get());
      editor.open();
      QCoreApplication::processEvents();
      act(editor);
    };
    Action("Toolbar1_2_2").trigger();
  }

  static void SaveIn(const DataEditor& editor) { Get<QAction>(editor, "Toolbar1_1").trigger(); }

  // A click in the question that comes up next, after a look at it.
  static void InConflict(const char* button, const std::function<void(QWidget&)>& look = {}) {
    QTimer::singleShot(0, [button, look] {
      QWidget* question = QApplication::activeModalWidget();
      ASSERT_TRUE(question && question->objectName() == u"ConflictForm");
      if (look) look(*question);
      Get<QPushButton>(*question, button).click();
    });
  }
  static QString Cell(QWidget& question, int column) {
    return Get<QTableWidget>(question, "tableVersions").item(0, column)->text();
  }
  QVariant Stored(const QString& column, const QString& name = u"Bore"_s) const {
    return program.Rows(u"SELECT %1 FROM StatData WHERE Description = '%2'"_s.arg(column, name)).at(0).at(0);
  }
  // As a script does it.
  void AppendElsewhere(const QString& name, const QStringList& values) const {
    Library::Open(program.LibraryPath(), {})->Append(name, values, clock.now);
  }
};

TEST_F(SharingTest, TheListFollowsTheLibrary) {
  QStringList names;
  for (int i = 0; i < 60; ++i) names << u"D%1"_s.arg(i, 2, 10, QChar(u'0'));
  StartLoaded(names);
  ClickRow(0);
  QScrollBar& bar = *List().verticalScrollBar();
  bar.setValue(bar.maximum() / 2);
  const int scrolled = bar.value();
  const QString topID = TopRow();
  Tick("WatchTimer");
  EXPECT_EQ(opened, QStringList());

  AppendElsewhere(u"D00"_s, {u"90"_s, u"90"_s, u"90"_s, u"90"_s});
  const QString before = StateOf(0);
  Tick("WatchTimer");
  EXPECT_NE(StateOf(0), before) << "the state";
  EXPECT_EQ(Summary("SampleQty"), u"44");
  program.Execute(u"DELETE FROM StatData WHERE Description = 'D01'"_s);
  program.Insert(u"NEW"_s);
  program.Execute(u"UPDATE StatData SET Description = 'TWO' WHERE Description = 'D02'"_s);
  Tick("WatchTimer");
  QStringList expected = names;
  expected.removeAt(1);
  expected[1] = u"TWO"_s;
  EXPECT_EQ(Rows(), expected << u"NEW"_s);
  EXPECT_EQ(Current(), u"D00");
  EXPECT_EQ(TopRow(), topID);
  EXPECT_NEAR(bar.value(), scrolled, List().visualRect(At(0, 1)).height() + 1);
  EXPECT_EQ(int(program.state.gDataCollection.size()), Rows().size());

  program.Execute(u"DELETE FROM StatData WHERE Description = 'D00'"_s);
  Tick("WatchTimer");
  EXPECT_TRUE(Panel().contains(u"deleted \"D00\""_s));
  EXPECT_NE(program.state.gCurrentDataID, 0);
  program.Execute(u"DELETE FROM StatData"_s);
  Tick("WatchTimer");
  EXPECT_EQ(Enabled(), u"-x--x---");
  EXPECT_TRUE(Action("Toolbar1_2_5").isEnabled()) << "there may be something to restore";
  EXPECT_EQ(Summary("SampleQty"), QString());
  EXPECT_TRUE(List().accessibleDescription().contains(u"Stat Data, Add"));
  program.Insert(u"LAST"_s);
  Tick("WatchTimer");
  EXPECT_EQ(Enabled(), u"xxxxxxxx");
  EXPECT_EQ(Current(), u"LAST");
}

TEST_F(SharingTest, AFileInTheLibrarysPlaceIsRead) {
  StartLoaded({u"Bore"_s, u"Shaft"_s});
  const QString other = OtherLibrary();
  ASSERT_TRUE(QFile::remove(program.LibraryPath()));
  ASSERT_TRUE(QFile::rename(other, program.LibraryPath()));
  Tick("WatchTimer");
  program.Insert(u"PIN"_s);
  Tick("WatchTimer");
  EXPECT_EQ(Rows(), QStringList{u"PIN"_s});
  Tick("NewsTimer");
  EXPECT_EQ(Panel(), u"Current Database: StatData.mdb (DB Rev. 2.1)");
  // While nothing can be read that is said as long as it is so, and what was read stays.
  const QString aside = program.Path(u"aside"_s);
  ASSERT_TRUE(QFile::rename(program.LibraryPath(), aside));
  for (const char* timer : {"WatchTimer", "NewsTimer", "WatchTimer"}) Tick(timer);
  EXPECT_TRUE(Panel().contains(u"there is no such file"_s)) << Panel().toStdString();
  EXPECT_EQ(Rows(), QStringList{u"PIN"_s});
  QFile damaged(program.LibraryPath());
  ASSERT_TRUE(damaged.open(QIODevice::WriteOnly) && damaged.write("a shopping list"));
  damaged.close();
  Tick("WatchTimer");
  EXPECT_TRUE(Panel().contains(u"is not a database"_s)) << Panel().toStdString();
  ASSERT_TRUE(QFile::remove(program.LibraryPath()) && QFile::rename(aside, program.LibraryPath()));
  Tick("WatchTimer");
  EXPECT_TRUE(Panel().contains(u"has been read again"_s)) << Panel().toStdString();
  program.Execute(u"DELETE FROM StatData"_s);
  Tick("WatchTimer");
  EXPECT_TRUE(Rows().isEmpty()) << "it is watched from now on";
}

TEST_F(SharingTest, F5ReadsAllAgainAndKeepsThePlace) {
  StartLoaded({u"Bore"_s, u"Shaft"_s});
  ClickRow(1);
  program.Insert(u"PIN"_s);
  QTest::keyClick(main.get(), Qt::Key_F5);
  EXPECT_EQ(Rows().last(), u"PIN");
  EXPECT_EQ(Current(), u"Shaft");
}

TEST_F(SharingTest, WhatCannotBeReadIsNamedAndTheRestIsUsable) {
  Start({u"Bore"_s, u"Shaft"_s});
  program.Execute(u"UPDATE StatData SET XBarUCL = NULL WHERE Description = 'Bore'"_s);
  program.boxes.Expect(u"\"Bore\"");
  Tick("InitTimer");
  EXPECT_EQ(Rows(), QStringList{u"Shaft"_s});
  EXPECT_TRUE(Panel().contains(u"\"Bore\""_s)) << Panel().toStdString();
  EXPECT_EQ(Enabled(), u"xxxxxxxx");
  program.Execute(u"UPDATE StatData SET XBarUCL = NULL"_s);
  program.boxes.Expect(u"\"Shaft\"");
  QTest::keyClick(main.get(), Qt::Key_F5);
  EXPECT_EQ(Enabled(), u"-x--x---");
  EXPECT_TRUE(List().accessibleDescription().contains(u"\"Shaft\""_s)) << "not: no data sets yet";
  program.Execute(u"ALTER TABLE StatData RENAME TO Elsewhere"_s);
  program.boxes.Expect(u"no such table");
  QTest::keyClick(main.get(), Qt::Key_F5);
  EXPECT_EQ(Enabled(), u"-x--x---");
  EXPECT_TRUE(List().accessibleDescription().contains(u"no such table"_s));
  program.Execute(u"ALTER TABLE Elsewhere RENAME TO StatData"_s);
  program.Execute(u"UPDATE StatData SET XBarUCL = 0"_s);
  QTest::keyClick(main.get(), Qt::Key_F5);
  EXPECT_EQ(Rows().size(), 2);
  EXPECT_EQ(Panel(), libraryAttached);
  // The same while it is open, by somebody else's hand.
  WithEditor([&](DataEditor& editor) {
    program.Execute(u"UPDATE StatData SET XBarUCL = NULL WHERE Description = 'Bore'"_s);
    Tick("WatchTimer");
    EXPECT_TRUE(Panel().contains(u"\"Bore\" (ID 1): XBarUCL is Null."_s)) << Panel().toStdString();
    EXPECT_TRUE(TextOf(editor, "lblHint").contains(u"XBarUCL is Null."_s)) << "not: deleted";
  });
  EXPECT_EQ(Rows(), QStringList{u"Shaft"_s});
  program.Execute(u"UPDATE StatData SET XBarUCL = 0"_s);
  Tick("WatchTimer");
  EXPECT_EQ(Rows().size(), 2);
  EXPECT_EQ(Panel(), libraryAttached);
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
  const auto expect = [this] { program.boxes.Expect(u"in use by another program"); };
  WithEditor([&](DataEditor& editor) {
    Type(editor, "txtUSL", u"13"_s);
    expect();
    SaveIn(editor);
    EXPECT_EQ(TextOf(editor, "txtUSL"), u"13");
    program.boxes.Expect(Answer::No, u"Do you wish to save");
    editor.close();
  });
  EXPECT_EQ(before->LastModified(), modified);
  EXPECT_EQ(Summary("UpperSpecLimit"), u"12");
  expect();
  EXPECT_FALSE(DataObjectFunctions::AppendToDataObject(before, {u"1"_s}));
  EXPECT_EQ(before->SampleQty(), 40);
  expect();
  EXPECT_FALSE(DataObjectFunctions::SaveDataObjectToDatabase(TestProgram::NewDataSet(u"NEW"_s)));
  program.boxes.Expect(Answer::Yes, u"delete the selected item");
  expect();
  Action("Toolbar1_2_3").trigger();
  EXPECT_EQ(Rows(), QStringList{u"Bore"_s});
}

TEST_F(SharingTest, AnOpenEditorKeepsWhatWasTypedAndSavesBoth) {
  StartLoaded({u"Bore"_s});
  WithEditor([&](DataEditor& editor) {
    Type(editor, "txtUSL", u"13"_s);
    AppendElsewhere(u"Bore"_s, {u"9.5"_s, u"10.5"_s, u"10.5"_s, u"10.25"_s});
    Tick("WatchTimer");
    EXPECT_EQ(TextOf(editor, "txtUSL"), u"13");
    EXPECT_TRUE(TextOf(editor, "lblHint").contains(u": somebody else changed this data set."_s));
    EXPECT_EQ(Summary("SampleQty"), u"44") << "the main window follows";
    program.boxes.Expect(u"All data successfully saved.");
    SaveIn(editor);
    EXPECT_TRUE(TextOf(editor, "lblHint").contains(u"4 values were added meanwhile."_s));
    EXPECT_TRUE(Stored(u"\"Values\""_s).toString().endsWith(u",10.5,10.25,"_s));
    EXPECT_EQ(Stored(u"UpperSpecLimit"_s), 13);
    Tick("WatchTimer");  // what it has written itself is no news
    EXPECT_FALSE(TextOf(editor, "lblHint").contains(u"somebody"_s));
    program.Execute(u"UPDATE StatData SET LowerSpecLimit = 7"_s);
    QTest::keyClick(&editor, Qt::Key_F5);
    EXPECT_EQ(TextOf(editor, "txtLSL"), u"7.0000");
  });
  EXPECT_EQ(Summary("UpperSpecLimit"), u"13");
}

TEST_F(SharingTest, AConflictShowsBothVersionsAndAsks) {
  StartLoaded({u"Bore"_s});
  WithEditor([&](DataEditor& editor) {
    const auto save = [&] { SaveIn(editor); };
    Type(editor, "txtUSL", u"13"_s);
    program.Execute(u"UPDATE StatData SET UpperSpecLimit = 14, NominalSpecLimit = 11"_s);
    InConflict("cmdCancel", [](QWidget& question) {
      EXPECT_TRUE(TextOf(question, "lblQuestion").contains(u"\"Bore\""_s));
      EXPECT_EQ(Cell(question, 1), u"Nominal: 10\nUSL: 13");
      EXPECT_EQ(Cell(question, 2), u"Nominal: 11\nUSL: 14");
      EXPECT_EQ(Get<QTableWidget>(question, "tableVersions").rowCount(), 1);
    });
    save();
    EXPECT_EQ(Stored(u"UpperSpecLimit"_s), 14);
    EXPECT_EQ(TextOf(editor, "txtUSL"), u"13") << "what was typed stays";
    InConflict("cmdMine");
    program.boxes.Expect(u"All data successfully saved.");
    save();
    EXPECT_EQ(Stored(u"UpperSpecLimit"_s), 13);
    Type(editor, "txtUSL", u"15"_s);
    program.Execute(u"UPDATE StatData SET UpperSpecLimit = 16"_s);
    InConflict("cmdTheirs");
    save();
    EXPECT_EQ(Stored(u"UpperSpecLimit"_s), 16);
    EXPECT_EQ(TextOf(editor, "txtUSL"), u"16.0000");
    auto& raw = Get<QPlainTextEdit>(editor, "txtRawData");
    raw.moveCursor(QTextCursor::Start);
    raw.insertPlainText(u"7\n"_s);
    program.Execute(u"UPDATE StatData SET \"Values\" = '8' || substr(\"Values\", 4)"_s);
    InConflict("cmdCancel", [](QWidget& question) {
      EXPECT_TRUE(Cell(question, 1).startsWith(u"41 samples\nno. 1: 7\n"_s))
          << Cell(question, 1).toStdString();
      EXPECT_TRUE(Cell(question, 2).startsWith(u"40 samples\nno. 1: 8\n"_s));
    });
    save();
  });
  EXPECT_EQ(Summary("UpperSpecLimit"), u"16");
}

TEST_F(SharingTest, ADeletedDataSetIsAddedOnlyWhereTheUserWantsIt) {
  StartLoaded({u"Bore"_s, u"Shaft"_s});
  WithEditor([&](DataEditor& editor) {
    Type(editor, "txtUSL", u"13"_s);
    program.Execute(u"DELETE FROM StatData WHERE Description = 'Bore'"_s);
    Tick("WatchTimer");
    EXPECT_TRUE(TextOf(editor, "lblHint").contains(u"deleted"_s));
    program.boxes.Expect(Answer::No, u"as a new data set?");
    SaveIn(editor);
    EXPECT_EQ(program.Rows(u"SELECT ID FROM StatData"_s).size(), 1U);
    EXPECT_EQ(TextOf(editor, "txtUSL"), u"13");
    program.boxes.Expect(Answer::Yes, u"as a new data set?");
    program.boxes.Expect(u"All data successfully saved.");
    SaveIn(editor);
    EXPECT_EQ(Stored(u"ID"_s), 3) << "a number is never given twice";
    // Deleted once more, and saved before the main window has looked.
    program.Execute(u"DELETE FROM StatData WHERE ID = 3"_s);
    Type(editor, "txtUSL", u"12.5"_s);
    program.boxes.Expect(Answer::Yes, u"as a new data set?");
    program.boxes.Expect(u"All data successfully saved.");
    SaveIn(editor);
    EXPECT_EQ(program.state.gCurrentDataID, 4);
    Tick("WatchTimer");
    Type(editor, "txtUSL", u"14"_s);
    program.boxes.Expect(u"All data successfully saved.");
    SaveIn(editor);
    EXPECT_EQ(Stored(u"UpperSpecLimit"_s), 14);
  });
  EXPECT_EQ(Rows(), (QStringList{u"Shaft"_s, u"Bore"_s}));
  EXPECT_EQ(Current(), u"Bore");
  EXPECT_EQ(program.state.gDataCollection.size(), 2U);
  EXPECT_EQ(program.state.gDataCollection.at(1)->ID(), 4);
}

TEST_F(SharingTest, WhatWasDeletedIsRestored) {
  StartLoaded({u"Bore"_s, u"Shaft"_s});
  program.boxes.Expect(Answer::Yes,
                       u"This operation cannot be undone\rIt is kept aside: Stat Data, Restore Deleted");
  program.boxes.Expect(Answer::No, u"successfully deleted");
  Action("Toolbar1_2_3").trigger();
  program.Insert(u"bore"_s);
  inRestore = [this] {
    RestoreForm form;
    form.open();
    auto& list = Get<QTreeWidget>(form, "listDeleted");
    EXPECT_EQ(list.topLevelItemCount(), 1);
    const QTreeWidgetItem& row = *list.topLevelItem(0);
    EXPECT_EQ(row.text(0) + u' ' + row.text(2), u"Bore 40");
    EXPECT_TRUE(row.text(1).startsWith(u"2024-02-29 13:4"_s));
    EXPECT_FALSE(row.icon(3).isNull());
    QTest::keyClick(&form, Qt::Key_Return);
    EXPECT_TRUE(TextOf(form, "lblNews").contains(u"another name"_s));
    Type(form, "txtName", u"Bore 2"_s);
    QTest::keyClick(&form, Qt::Key_Return);
    EXPECT_TRUE(TextOf(form, "lblNews").contains(u"\"Bore 2\" is back"_s));
    EXPECT_EQ(list.topLevelItemCount(), 0);
    EXPECT_EQ(Rows(), (QStringList{u"Bore 2"_s, u"Shaft"_s, u"bore"_s})) << "at once, in its old place";
    EXPECT_FALSE(Get<QPushButton>(form, "cmdRestore").isEnabled());
  };
  Action("Toolbar1_2_5").trigger();
  EXPECT_EQ(Stored(u"ID"_s, u"Bore 2"_s), 1);
}

TEST_F(SharingTest, ADataSetIsRenamedHereAndElsewhere) {
  StartLoaded({u"Bore"_s, u"Shaft"_s});
  ClickRow(1);
  inRename = [this] {
    RenameForm form;
    form.open();
    EXPECT_EQ(TextOf(form, "txtName"), u"Shaft");
    for (const QString& refused : {u" "_s, u"bore"_s}) {
      Type(form, "txtName", refused);
      QTest::keyClick(&form, Qt::Key_Return);
      EXPECT_TRUE(form.isVisible());
    }
    EXPECT_TRUE(TextOf(form, "lblNews").contains(u"\"bore\" already"_s));
    Type(form, "txtName", u" Axle "_s);
    QTest::keyClick(&form, Qt::Key_Return);
    EXPECT_FALSE(form.isVisible());
  };
  QTest::keyClick(main.get(), Qt::Key_F2);
  EXPECT_EQ(Rows(), QStringList({u"Bore"_s, u"Axle"_s}));
  EXPECT_EQ(Current(), u"Axle");

  WithEditor([&](DataEditor& editor) {
    Type(editor, "txtUSL", u"13"_s);
    Library::Open(program.LibraryPath(), {})->Rename(u"Axle"_s, u"PIN"_s, clock.now);
    Tick("WatchTimer");
    EXPECT_FALSE(TextOf(editor, "lblHint").contains(u"deleted"_s));
    Library::Open(program.LibraryPath(), {})->Rename(u"PIN"_s, u"BOLT"_s, clock.now);
    program.boxes.Expect(u"All data successfully saved.");
    SaveIn(editor);  // before the main window has looked
    EXPECT_TRUE(TextOf(editor, "lblHint").contains(u"renamed it \"BOLT\""_s));
    EXPECT_EQ(TextOf(editor, "txtDescription"), u"BOLT");
    EXPECT_EQ(Rows(), QStringList({u"Bore"_s, u"BOLT"_s}));
    EXPECT_EQ(program.state.gDataCollection.at(1)->UpperSpecLimit(), 13);
  });
  EXPECT_EQ(Stored(u"UpperSpecLimit"_s, u"BOLT"_s), 13);
  inRename = [this] {
    RenameForm form;
    form.open();
    program.Execute(u"DELETE FROM StatData WHERE Description = 'BOLT'"_s);
    Tick("WatchTimer");
    EXPECT_TRUE(TextOf(form, "lblNews").contains(u"deleted"_s));
    EXPECT_FALSE(Get<QPushButton>(form, "cmdRename").isEnabled());
  };
  Action("Toolbar1_2_6").trigger();
}

TEST_F(SharingTest, ASecondStartHandsItsLibraryOverForThisRun) {
  StartLoaded({u"Bore"_s});
  const QString other = OtherLibrary();
  main->ShowLibrary({});
  main->ShowLibrary(program.LibraryPath());
  EXPECT_EQ(Panel(), libraryAttached) << "nothing to do but to show the window";
  main->ShowLibrary(other);
  Tick("HandOverTimer");
  EXPECT_EQ(Panel(), otherAttached);
  EXPECT_EQ(StoredDatabase(), program.LibraryPath());
  Tick("InitTimer");
  EXPECT_TRUE(Rows().isEmpty());
  main->ShowLibrary(program.Path(u"nowhere.db"_s));
  program.boxes.Expect(u"Error opening database:");
  Tick("HandOverTimer");
  EXPECT_EQ(Panel(), otherAttached);
  EXPECT_EQ(program.state.gDatabaseForThisRun, other);
  // A request waits like a library, and what it makes stays the library.
  const QString made = program.Path(u"made.mdb"_s);
  main->ShowLibrary(u"--new-library"_s);
  files.Expect(made);
  Tick("HandOverTimer");
  EXPECT_EQ(StoredDatabase(), made);
}

TEST_F(SharingTest, ALibraryHandedOverWaitsForWhatIsNotSaved) {
  StartLoaded({u"Bore"_s});
  const QString other = OtherLibrary();
  WithEditor([&](DataEditor& editor) {
    Type(editor, "txtUSL", u"13"_s);
    main->ShowLibrary(other);
    program.boxes.Expect(Answer::Cancel, u"Do you wish to save these changes?");
    Tick("HandOverTimer");
    EXPECT_TRUE(editor.isVisible());
    EXPECT_EQ(TextOf(editor, "txtUSL"), u"13");
    EXPECT_TRUE(Panel().contains(u"was not opened"_s));
    Tick("NewsTimer");
    EXPECT_EQ(Panel(), libraryAttached);
    Tick("HandOverTimer");  // is not asked again
    main->ShowLibrary(other);
    program.boxes.Expect(Answer::No, u"Do you wish to save these changes?");
    Tick("HandOverTimer");
    EXPECT_FALSE(editor.isVisible());
  });
  Tick("HandOverTimer");
  EXPECT_EQ(Panel(), otherAttached);
}

}  // namespace
