// The units screen, driven with clicks and keys.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QTest>

#include "platform/ui/RecordBar.h"
#include "screens/frmUnits.h"
#include "tests/support/TestProgram.h"

using namespace Qt::StringLiterals;
using MessageBox::Answer;

namespace {

class UnitsTest : public testing::Test {
 protected:
  UnitsTest() {
    for (const QString& name : {u"mm"_s, u"kg"_s, u"bar"_s})
      program.Execute(u"INSERT INTO Units (Name, Description) VALUES (?, ?)"_s, {name, name + u" text"_s});
    form.show();
    Tick();
  }

  void Tick() { QMetaObject::invokeMethod(Timer(u"ChangeMonitorTimer"_s), "timeout"); }
  QTimer* Timer(const QString& name) const { return form.findChild<QTimer*>(name); }
  RecordBar* Bar() const { return form.findChild<RecordBar*>(u"qsMenuBar1"_s); }
  void Run(int command) { Bar()->Button(command)->trigger(); }
  QLineEdit* Name() const { return form.findChild<QLineEdit*>(u"txtName"_s); }
  QLineEdit* Description() const { return form.findChild<QLineEdit*>(u"txtDescription"_s); }
  void Type(QLineEdit* box, const QString& text) {
    box->clear();
    QTest::keyClicks(box, text);
    Tick();
  }
  void Add(const QString& name) {
    Run(RecordBar::Add);
    Type(Name(), name);
  }
  void Refuse(const QString& text) {
    program.boxes.Expect();
    Run(RecordBar::Save);
    const MessageBox::Request box = program.boxes.Take();
    EXPECT_TRUE(box.text.startsWith(text)) << box.text.toStdString();
  }
  // "name=description" of every unit, the deleted ones with "x" in front.
  QStringList Stored() const {
    QStringList units;
    for (const QVariantList& row : program.Rows(u"SELECT * FROM Units"_s))
      units << (row[3].toBool() ? u"x"_s : QString()) + row[1].toString() + u'=' + row[2].toString();
    return units;
  }

  TestProgram program;
  frmUnits form;
  const QStringList asBefore{u"mm=mm text"_s, u"kg=kg text"_s, u"bar=bar text"_s};
};

TEST_F(UnitsTest, OpensEmptyAndWalksThroughTheList) {
  EXPECT_TRUE(Name()->text().isEmpty());
  EXPECT_TRUE(Name()->isReadOnly());
  EXPECT_TRUE(Description()->isReadOnly()) << "there is no unit to describe";
  EXPECT_FALSE(Bar()->IsEnabled(RecordBar::Delete));
  Run(RecordBar::RefreshList);
  QStringList seen{Name()->text()};
  for (const int command : {RecordBar::Previous, RecordBar::Next, RecordBar::Next, RecordBar::Next,
                            RecordBar::First, RecordBar::Last, RecordBar::Previous}) {
    Run(command);
    seen << Name()->text();
  }
  EXPECT_EQ(seen.join(u' '), u"mm mm kg bar bar mm bar kg"_s);
  EXPECT_TRUE(Name()->isReadOnly());
  EXPECT_EQ(Description()->text(), u"kg text"_s);
  Run(RecordBar::Exit);
  EXPECT_TRUE(Timer(u"ExitTimer"_s)->isActive());
  QMetaObject::invokeMethod(Timer(u"ExitTimer"_s), "timeout");
  EXPECT_FALSE(form.isVisible());
}

TEST_F(UnitsTest, AddsUniqueNamesOnly) {
  Add(u" "_s);
  Refuse(u"Units Of Measurement requires a unique name"_s);
  Type(Name(), u"KG"_s);
  Refuse(u"The Unit Of Measurement entered already exists."_s);
  Type(Name(), u"5' rule"_s);
  Refuse(u"QCGlobalFunctions::IsDuplicateName failed"_s);
  EXPECT_EQ(Stored(), asBefore);
  Type(Name(), u"inch; µ"_s);
  EXPECT_TRUE(Bar()->IsEnabled(RecordBar::Save));
  Run(RecordBar::Save);
  EXPECT_FALSE(Bar()->IsEnabled(RecordBar::Save));
  EXPECT_EQ(Stored(), asBefore + QStringList{u"inch; µ="_s});
  EXPECT_TRUE(Name()->isReadOnly());
  Run(RecordBar::First);
  Type(Description(), {});
  Run(RecordBar::Save);
  EXPECT_EQ(Stored()[0], asBefore[0]) << "an emptied description never overwrites the stored one";
}

TEST_F(UnitsTest, DeletesSoftlyAndFreesTheName) {
  Run(RecordBar::RefreshList);
  Run(RecordBar::Next);
  program.boxes.Expect(Answer::No);
  Run(RecordBar::Delete);
  EXPECT_EQ(Stored(), asBefore);
  program.boxes.Expect(Answer::Yes);
  program.boxes.Expect();
  Run(RecordBar::Delete);
  EXPECT_EQ(Stored(), QStringList({u"mm=mm text"_s, u"xkg=kg text"_s, u"bar=bar text"_s}));
  EXPECT_EQ(program.boxes.Take().title, u"Confirmation"_s);
  program.boxes.Take();
  const MessageBox::Request done = program.boxes.Take();
  EXPECT_EQ(done.text, u"The current Unit Of Measurement has been deleted"_s);
  EXPECT_EQ(done.title, u"Information"_s);
  EXPECT_EQ(Name()->text(), u"mm"_s);

  Add(u"kg"_s);
  EXPECT_FALSE(Bar()->IsEnabled(RecordBar::Delete)) << "the record behind the new one";
  Run(RecordBar::Save);
  EXPECT_EQ(Stored().last(), u"kg="_s);

  program.Execute(u"DELETE * FROM Units"_s);
  program.boxes.Expect(Answer::Yes);
  program.boxes.Expect();
  Run(RecordBar::Delete);
  program.boxes.Take();
  EXPECT_EQ(program.boxes.Take().text, u"Failed to delete the current Unit Of Measurement"_s);
}

TEST_F(UnitsTest, EveryMoveAsksAboutUnsavedChanges) {
  Run(RecordBar::RefreshList);
  Run(RecordBar::Next);
  for (const int command : {RecordBar::Add, RecordBar::RefreshList, RecordBar::First, RecordBar::Previous,
                            RecordBar::Next, RecordBar::Last}) {
    SCOPED_TRACE(command);
    QTest::keyClicks(Description(), u"!"_s);  // at once, before the monitor has seen it
    program.boxes.Expect(Answer::Cancel);
    Run(command);
    EXPECT_EQ(Name()->text(), u"kg"_s);
    EXPECT_EQ(Description()->text(), u"kg text!"_s);
    program.boxes.Expect(Answer::No);
    Run(command);
    EXPECT_EQ(Stored(), asBefore);
    if (command == RecordBar::Add) program.boxes.Expect(Answer::No);  // the new, empty unit
    Run(RecordBar::First);
    Run(RecordBar::Next);
  }
  QTest::keyClicks(Description(), u"!"_s);
  program.boxes.Expect(Answer::Yes);
  Run(RecordBar::Next);
  EXPECT_EQ(Name()->text(), u"bar"_s);
  EXPECT_EQ(Stored()[1], u"kg=kg text!"_s);
}

TEST_F(UnitsTest, ClosingAsksAboutUnsavedChanges) {
  Add(u"inch"_s);
  program.boxes.Expect(Answer::Cancel);
  QTest::keyClick(&form, Qt::Key_Escape);
  EXPECT_TRUE(form.isVisible());
  program.boxes.Expect(Answer::Yes);
  form.close();
  EXPECT_FALSE(form.isVisible());
  EXPECT_EQ(Stored().last(), u"inch="_s);
}

TEST_F(UnitsTest, AChangeThatCannotBeWrittenIsNotWrittenLater) {
  Run(RecordBar::RefreshList);
  QTest::keyClicks(Description(), u"!"_s);
  Connection::FaultHook = [](const QString& operation) {
    if (operation == u"update"_s) throw DatabaseError(u"the disk is full"_s);
  };
  Tick();
  Refuse(u"frmUnits::SaveCurrentData failed"_s);
  Connection::FaultHook = nullptr;
  EXPECT_EQ(Description()->text(), u"mm text!"_s) << "what was typed stays";
  program.boxes.Expect(Answer::No);
  Run(RecordBar::Next);
  EXPECT_EQ(Stored(), asBefore);
}

}  // namespace
