// The units screen, driven with clicks and keys.
#include "core/GlobalFunctions.h"
#include "screens/RecordBar.h"
#include "screens/frmUnits.h"
#include "tests/support/TestProgram.h"
#include "tests/support/Widgets.h"

namespace {

class UnitsTest : public testing::Test {
 protected:
  UnitsTest() {
    for (const QString& name : {u"mm"_s, u"kg"_s, u"bar"_s})
      program.Execute(u"INSERT INTO Units (Name, Description) VALUES (?, ?)"_s, {name, name + u" text"_s});
    form.show();
    Fire(form, "ChangeMonitorTimer");
  }

  RecordBar& Bar() const { return Get<RecordBar>(form, "qsMenuBar1"); }
  template <class... Commands>
  void Run(Commands... commands) {
    for (const int command : {commands...}) Bar().Button(command)->trigger();
  }
  QString Name() const { return TextOf(form, "txtName"); }
  QString Description() const { return TextOf(form, "txtDescription"); }
  bool IsReadOnly(const char* box) const { return Get(form, box).isReadOnly(); }
  void Enter(const char* box, const QString& text) {
    Type(form, box, text);
    Fire(form, "ChangeMonitorTimer");
  }
  // Typed at once, before the monitor has seen it.
  void Describe() { QTest::keyClicks(&Get(form, "txtDescription"), u"!"_s); }
  void Refuse(QStringView text) {
    program.boxes.Expect(text);
    Run(RecordBar::Save);
  }
  // "name=description" of every unit, the deleted ones with "x" in front.
  QString Stored() const {
    QStringList units;
    for (const QVariantList& row : program.Rows(u"SELECT * FROM Units"_s))
      units << (row[3].toBool() ? u"x"_s : QString()) + row[1].toString() + u'=' + row[2].toString();
    return units.join(u',');
  }

  TestProgram program;
  frmUnits form;
  const QString asBefore = u"mm=mm text,kg=kg text,bar=bar text"_s;
};

TEST_F(UnitsTest, OpensEmptyAndWalksThroughTheList) {
  EXPECT_TRUE(Name().isEmpty());
  EXPECT_TRUE(IsReadOnly("txtDescription")) << "there is no unit to describe";
  EXPECT_FALSE(Bar().Button(RecordBar::Delete)->isEnabled());
  QStringList seen;
  for (const int command : {RecordBar::RefreshList, RecordBar::Previous, RecordBar::Next, RecordBar::Next,
                            RecordBar::Next, RecordBar::First, RecordBar::Last, RecordBar::Previous}) {
    Run(command);
    seen << Name();
  }
  EXPECT_EQ(seen.join(u' '), u"mm mm kg bar bar mm bar kg");
  EXPECT_TRUE(IsReadOnly("txtName"));
  EXPECT_EQ(Description(), u"kg text");
  Run(RecordBar::Exit);
  EXPECT_TRUE(Get<QTimer>(form, "ExitTimer").isActive());
  Fire(form, "ExitTimer");
  EXPECT_FALSE(form.isVisible());
}

TEST_F(UnitsTest, AddsUniqueNamesOnly) {
  Run(RecordBar::Add);
  for (const auto& [name, refusal] : {std::pair{u" "_s, u"Units Of Measurement requires a unique name"},
                                      {u"KG"_s, u"The Unit Of Measurement entered already exists."},
                                      {u"5' rule"_s, u"apostrophe"}}) {
    Enter("txtName", name);
    Refuse(refusal);
  }
  EXPECT_EQ(Stored(), asBefore);
  Enter("txtName", u"inch; µ"_s);
  Run(RecordBar::Save);
  EXPECT_FALSE(Bar().Button(RecordBar::Save)->isEnabled());
  EXPECT_EQ(Stored(), asBefore + u",inch; µ="_s);
  EXPECT_TRUE(IsReadOnly("txtName"));
  Run(RecordBar::RefreshList);
  Enter("txtDescription", {});
  EXPECT_TRUE(Bar().Button(RecordBar::Save)->isEnabled());
  Run(RecordBar::Save);
  EXPECT_TRUE(Stored().startsWith(asBefore)) << "an emptied description never overwrites the stored one";
}

TEST_F(UnitsTest, TypingANameBeginsAUnitOrSaysWhyNot) {
  QLineEdit& name = Get(form, "txtName");
  QTest::keyClick(&name, Qt::Key_Right);
  EXPECT_TRUE(IsReadOnly("txtName")) << "no text";
  QTest::keyClicks(&name, u"inch"_s);
  EXPECT_EQ(Name(), u"inch");
  for (const char* next : {"txtDescription", "qsMenuBar1_2"}) {
    QTest::keyClick(form.focusWidget(), Qt::Key_Return);
    EXPECT_EQ(form.focusWidget()->objectName(), QLatin1StringView(next));
  }
  QTest::keyClick(form.focusWidget(), Qt::Key_Return);
  EXPECT_EQ(Stored(), asBefore + u",inch="_s);
  form.LibraryChanged();
  EXPECT_EQ(Name() + TextOf(form, "lblRecord"), u"inchUnit 4 of 4") << "in sight, and among the others";
  QTest::keyClicks(&name, u"x"_s);
  EXPECT_TRUE(TextOf(form, "lblRecord").contains(u"The name of a unit stays"_s));
  EXPECT_NE(Name(), u"x");
  QCoreApplication::processEvents();
  const auto& record = Get<QWidget>(form, "lblRecord");
  EXPECT_GE(record.height(), record.heightForWidth(record.width())) << "all of it can be read";
  Run(RecordBar::RefreshList);
  EXPECT_EQ(TextOf(form, "lblRecord"), u"Unit 1 of 4");
}

TEST_F(UnitsTest, ADeletionLandsOnTheNeighbour) {
  Run(RecordBar::RefreshList);
  for (const char16_t* neighbour : {u"kg", u"bar", u""}) {
    program.boxes.Expect(Answer::Yes);
    program.boxes.Expect(u"has been deleted");
    Run(RecordBar::Delete);
    EXPECT_EQ(Name(), QString::fromUtf16(neighbour));
  }
  EXPECT_TRUE(TextOf(form, "lblRecord").startsWith(u"There are no units yet."_s));
}

TEST_F(UnitsTest, DeletesSoftlyAndFreesTheName) {
  Run(RecordBar::RefreshList, RecordBar::Next);
  program.boxes.Expect(Answer::No);
  Run(RecordBar::Delete);
  EXPECT_EQ(Stored(), asBefore);
  program.boxes.Expect(Answer::Yes, u"Are you sure you want to delete the current Unit Of Measurement?");
  program.boxes.Expect(u"The current Unit Of Measurement has been deleted");
  Run(RecordBar::Delete);
  EXPECT_EQ(Stored(), u"mm=mm text,xkg=kg text,bar=bar text");
  EXPECT_EQ(Name(), u"mm");

  Run(RecordBar::Add);
  Enter("txtName", u"kg"_s);
  EXPECT_FALSE(Bar().Button(RecordBar::Delete)->isEnabled()) << "the record behind the new one";
  Run(RecordBar::Save);
  EXPECT_TRUE(Stored().endsWith(u",kg="));

  program.Execute(u"DELETE * FROM Units"_s);
  program.boxes.Expect(Answer::Yes);
  program.boxes.Expect(u"Failed to delete the current Unit Of Measurement");
  Run(RecordBar::Delete);
}

TEST_F(UnitsTest, EveryMoveAsksAboutUnsavedChanges) {
  Run(RecordBar::RefreshList, RecordBar::Next);
  for (const int command : {RecordBar::Add, RecordBar::RefreshList, RecordBar::First, RecordBar::Previous,
                            RecordBar::Next, RecordBar::Last}) {
    SCOPED_TRACE(command);
    Describe();
    program.boxes.Expect(Answer::Cancel);
    Run(command);
    EXPECT_EQ(Description(), u"kg text!");
    program.boxes.Expect(Answer::No);
    Run(command);
    EXPECT_EQ(Stored(), asBefore);
    if (command == RecordBar::Add) program.boxes.Expect(Answer::No);  // the new, empty unit
    Run(RecordBar::First, RecordBar::Next);
  }
  Describe();
  program.boxes.Expect(Answer::Yes);
  Run(RecordBar::Next);
  EXPECT_EQ(Name(), u"bar");
  EXPECT_TRUE(Stored().contains(u"kg=kg text!"));
}

TEST_F(UnitsTest, ClosingAsksAboutUnsavedChanges) {
  Run(RecordBar::Add);
  Enter("txtName", u"inch"_s);
  program.boxes.Expect(Answer::Cancel);
  QTest::keyClick(&form, Qt::Key_Escape);
  EXPECT_TRUE(form.isVisible());
  program.boxes.Expect(Answer::Yes);
  form.close();
  EXPECT_FALSE(form.isVisible());
  EXPECT_TRUE(Stored().endsWith(u",inch="));
}

TEST_F(UnitsTest, WhatOthersWroteIsShownOrAskedAbout) {
  Run(RecordBar::RefreshList, RecordBar::Next);
  program.Execute(u"UPDATE Units SET Description = 'kilo' WHERE Name = 'kg'"_s);
  program.Execute(u"DELETE FROM Units WHERE Name = 'mm'"_s);
  form.LibraryChanged();
  EXPECT_EQ(Name() + u' ' + Description(), u"kg kilo") << "the same one, in another place";
  EXPECT_TRUE(TextOf(form, "lblRecord").startsWith(u"Unit 1 of 2"_s));

  Describe();
  program.Execute(u"UPDATE Units SET Description = 'other' WHERE Name = 'bar'"_s);
  form.LibraryChanged();
  EXPECT_EQ(TextOf(form, "lblRecord"), u"Unit 1 of 2") << "this one is as it was";
  program.Execute(u"UPDATE Units SET Description = 'theirs' WHERE Name = 'kg'"_s);
  form.LibraryChanged();
  EXPECT_EQ(Description(), u"kilo!");
  EXPECT_TRUE(TextOf(form, "lblRecord").contains(u"somebody else"_s));
  program.boxes.Expect(Answer::Yes);
  ClickInNextWindow("cmdCancel");
  form.close();
  EXPECT_TRUE(form.isVisible());
  EXPECT_EQ(Description(), u"kilo!");
  Fire(form, "ChangeMonitorTimer");
  ClickInNextWindow("cmdMine");
  Run(RecordBar::Save);
  EXPECT_EQ(Stored(), u"kg=kilo!,bar=other");
  Describe();
  Fire(form, "ChangeMonitorTimer");
  program.Execute(u"UPDATE Units SET Description = 'theirs' WHERE Name = 'kg'"_s);
  ClickInNextWindow("cmdTheirs");
  Run(RecordBar::Save);
  EXPECT_EQ(Description(), u"theirs");

  Describe();
  Fire(form, "ChangeMonitorTimer");
  program.Execute(u"UPDATE Units SET Deleted = 1 WHERE Name = 'kg'"_s);
  program.boxes.Expect(Answer::No, u"as a new unit?");
  Run(RecordBar::Save);
  EXPECT_EQ(Stored(), u"xkg=theirs,bar=other");
  program.boxes.Expect(Answer::Yes, u"as a new unit?");
  Run(RecordBar::Save);
  EXPECT_EQ(Stored(), u"xkg=theirs,bar=other,kg=theirs!");
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
  Enter("txtName", u"inch"_s);
  reopen();
  Run(RecordBar::Save);
  EXPECT_EQ(Stored(), u"mm=mm text!,kg=kg text,bar=bar text,inch="_s);
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
  Enter("txtName", u"inch"_s);
  others(u"INSERT INTO Units (Name, Description) VALUES ('Inch', 'theirs')"_s);
  Refuse(u"The Unit Of Measurement entered already exists.");
  EXPECT_EQ(Stored(), asBefore + u",Inch=theirs"_s);

  program.boxes.Expect(Answer::No);
  Run(RecordBar::RefreshList);
  Describe();
  Fire(form, "ChangeMonitorTimer");
  others(u"UPDATE Units SET Description = 'theirs' WHERE Name = 'mm'"_s);
  ClickInNextWindow("cmdCancel");
  Run(RecordBar::Save);
  EXPECT_TRUE(Stored().startsWith(u"mm=theirs,"_s));
  EXPECT_EQ(Description(), u"mm text!");
  Connection::FaultHook = {};
  program.boxes.Expect(Answer::No);
  Run(RecordBar::Next);
}

TEST_F(UnitsTest, AChangeThatCannotBeWrittenIsNotWrittenLater) {
  Run(RecordBar::RefreshList);
  Describe();
  TestProgram::FailAt(u"update"_s);
  Fire(form, "ChangeMonitorTimer");
  Refuse(u"frmUnits::SaveCurrentData failed");
  TestProgram::FailAt({});
  EXPECT_EQ(Description(), u"mm text!") << "what was typed stays";
  program.boxes.Expect(Answer::No);
  Run(RecordBar::Next);
  EXPECT_EQ(Stored(), asBefore);
}

}  // namespace
