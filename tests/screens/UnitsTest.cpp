// The units screen, driven with clicks and keys: each test is a walk whose protocol is approved.
#include "core/DataObjectFunctions.h"
#include "core/GlobalFunctions.h"
#include "screens/RecordBar.h"
#include "screens/frmUnits.h"
#include "tests/support/Walk.h"

namespace {

class UnitsTest : public Walk {
 protected:
  UnitsTest() : Walk(u"Units"_s) {
    for (const QString& name : {u"mm"_s, u"kg"_s, u"bar"_s})
      program.Execute(u"INSERT INTO Units (Name, Description) VALUES (?, ?)"_s, {name, name + u" text"_s});
    form.show();
    Fire(form, "ChangeMonitorTimer");
    protocol.Begin(u"Open"_s, &form);
  }
  QWidget& Form() const override { return const_cast<frmUnits&>(form); }

  void Run(int command, Answers answers) {
    QAction& button = *Get<RecordBar>(form, "qsMenuBar1").Button(command);
    Step(
        button.text(), [&] { button.trigger(); }, answers);
  }
  template <class... Commands>
  void Run(Commands... commands) {
    for (const int command : {commands...}) Run(command, Answers{});
  }
  void EnterSeen(const char* box, const QString& text) {
    const auto act = [&] { Type(form, box, text), Fire(form, "ChangeMonitorTimer"); };
    Step(u"%1: %2"_s.arg(QLatin1StringView(box), text), act);
  }
  // Typed at once, before the monitor has seen it, or not.
  void Describe(bool isSeen = false) {
    Step(u"!"_s, [&] {
      QTest::keyClicks(&Get(form, "txtDescription"), u"!"_s);
      if (isSeen) Fire(form, "ChangeMonitorTimer");
    });
  }
  void ChangeElsewhere(const QString& sql) {
    Elsewhere(sql, [this] { form.LibraryChanged(); });
  }

  frmUnits form;
};

TEST_F(UnitsTest, WalksThroughTheListAndLeaves) {
  Run(RecordBar::RefreshList, RecordBar::Previous, RecordBar::Next, RecordBar::Next, RecordBar::Next,
      RecordBar::First, RecordBar::Last, RecordBar::Previous, RecordBar::Exit);
  Tick("ExitTimer");
}

TEST_F(UnitsTest, AddsUniqueNamesOnly) {
  Run(RecordBar::Add);
  for (const auto& refused : {u" "_s, u"KG"_s, u"5' rule"_s}) {
    EnterSeen("txtName", refused);
    Run(RecordBar::Save, {Answer::Ok});
  }
  EnterSeen("txtName", u"inch; µ"_s);
  Run(RecordBar::Save, RecordBar::RefreshList);
  EnterSeen("txtDescription", {});  // never overwrites the stored one
  Run(RecordBar::Save);
}

TEST_F(UnitsTest, TypingANameBeginsAUnitOrSaysWhyNot) {
  QLineEdit& name = Get(form, "txtName");
  name.setFocus();
  Press(Qt::Key_Right);
  Press(Qt::Key_X);
  for (int i = 0; i < 3; ++i) Press(Qt::Key_Return);  // on to the description, to Save, and saved
  form.LibraryChanged();
  name.setFocus();
  Press(Qt::Key_Y);
  QCoreApplication::processEvents();
  const auto& record = Get<QWidget>(form, "lblRecord");
  EXPECT_GE(record.height(), record.heightForWidth(record.width())) << "all of it can be read";
  Run(RecordBar::RefreshList);
}

TEST_F(UnitsTest, DeletesSoftlyLandsOnTheNeighbourAndFreesTheName) {
  for (const auto& user : {u"Bore"_s, u"Shaft"_s}) program.Insert(user);
  ASSERT_TRUE(DataObjectFunctions::InitializeCDataCollection());
  Run(RecordBar::RefreshList, RecordBar::Next);
  Run(RecordBar::Delete, {Answer::No});
  Run(RecordBar::Delete, {Answer::Yes, Answer::Ok});
  Run(RecordBar::Add);
  EnterSeen("txtName", u"kg"_s);
  Run(RecordBar::Save);
  for (int i = 0; i < 3; ++i) Run(RecordBar::Delete, {Answer::Yes, Answer::Ok});
}

TEST_F(UnitsTest, ADeletionThatFailsIsTold) {
  Run(RecordBar::RefreshList);
  program.Execute(u"DELETE FROM Units"_s);
  Run(RecordBar::Delete, {Answer::Yes, Answer::Ok});
}

TEST_F(UnitsTest, EveryMoveAsksAboutUnsavedChanges) {
  Run(RecordBar::RefreshList, RecordBar::Next);
  for (const int command : {RecordBar::Add, RecordBar::RefreshList, RecordBar::First, RecordBar::Previous,
                            RecordBar::Next, RecordBar::Last}) {
    Describe();
    Run(command, {Answer::Cancel});
    Run(command, {Answer::No});
    if (command == RecordBar::Add) program.boxes.Expect(Answer::No);  // the new, empty unit
    Run(RecordBar::First, RecordBar::Next);
  }
  Describe();
  Run(RecordBar::Next, {Answer::Yes});
}

TEST_F(UnitsTest, ClosingAsksAboutUnsavedChanges) {
  Run(RecordBar::Add);
  EnterSeen("txtName", u"inch"_s);
  for (const Answer answer : {Answer::Cancel, Answer::Yes}) {
    Press(Qt::Key_Escape, {answer});
  }
}

TEST_F(UnitsTest, WhatOthersWroteIsShownOrAskedAbout) {
  Run(RecordBar::RefreshList, RecordBar::Next);
  program.Execute(u"DELETE FROM Units WHERE Name = 'mm'"_s);
  ChangeElsewhere(u"UPDATE Units SET Description = 'kilo' WHERE Name = 'kg'"_s);
  Describe();
  ChangeElsewhere(u"UPDATE Units SET Description = 'other' WHERE Name = 'bar'"_s);
  ChangeElsewhere(u"UPDATE Units SET Description = 'theirs' WHERE Name = 'kg'"_s);
  program.boxes.Expect(Answer::Yes);
  ClickInNextWindow("cmdCancel");
  Press(Qt::Key_Escape);
  Fire(form, "ChangeMonitorTimer");
  ClickInNextWindow("cmdMine");
  Run(RecordBar::Save);
  Describe(true);
  program.Execute(u"UPDATE Units SET Description = 'theirs' WHERE Name = 'kg'"_s);
  ClickInNextWindow("cmdTheirs");
  Run(RecordBar::Save);
  Describe(true);
  program.Execute(u"UPDATE Units SET Deleted = 1 WHERE Name = 'kg'"_s);
  Run(RecordBar::Save, {Answer::No});
  Run(RecordBar::Save, {Answer::Yes});
}

TEST_F(UnitsTest, FollowsALibraryThatIsOpenedAnew) {
  const auto reopen = [this] {
    GlobalFunctions::ReopenDatabase();
    form.LibraryChanged();
  };
  Run(RecordBar::RefreshList);
  Describe();
  reopen();
  Fire(form, "ChangeMonitorTimer");
  Run(RecordBar::Save, RecordBar::Add);
  EnterSeen("txtName", u"inch"_s);
  reopen();
  Run(RecordBar::Save);
  Describe(true);
  GlobalFunctions::ReopenDatabase();  // and is still being read
  Run(RecordBar::Save);
}

// Between the question whether a name is free and the writing.
TEST_F(UnitsTest, WhoIsQuickerIsNotOverwritten) {
  const auto others = [this](const QString& sql) {
    Connection::FaultHook = [this, sql, done = false](const QString& operation) mutable {
      if (!done && operation == u"begin"_s) {
        done = true;
        program.Execute(sql);
      }
    };
  };
  Run(RecordBar::Add);
  EnterSeen("txtName", u"inch"_s);
  others(u"INSERT INTO Units (Name, Description) VALUES ('Inch', 'theirs')"_s);
  Run(RecordBar::Save, {Answer::Ok});
  Run(RecordBar::RefreshList, {Answer::No});
  Describe(true);
  others(u"UPDATE Units SET Description = 'theirs' WHERE Name = 'mm'"_s);
  ClickInNextWindow("cmdCancel");
  Run(RecordBar::Save);
  Connection::FaultHook = {};
  Run(RecordBar::Next, {Answer::No});
}

TEST_F(UnitsTest, AChangeThatCannotBeWrittenIsNotWrittenLater) {
  Run(RecordBar::RefreshList);
  Describe(true);
  TestProgram::FailAt(u"update"_s);
  Run(RecordBar::Save, {Answer::Ok});
  TestProgram::FailAt({});
  Run(RecordBar::Next, {Answer::No});
}

TEST_F(UnitsTest, TypingIsHarmlessWhereTheUnitsCannotBeRead) {
  Step(u"Refresh list, in vain"_s,
       [&] {
         TestProgram::FailAt(u"select"_s);
         Get<RecordBar>(form, "qsMenuBar1").Button(RecordBar::RefreshList)->trigger();
         TestProgram::FailAt({});
       },
       {Answer::Ok});
  EnterSeen("txtName", u"in"_s);
  Run(RecordBar::RefreshList);
}

}  // namespace
