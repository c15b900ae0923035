// Two data sets beside each other: from the selection in the main window to the page on paper.

#include "screens/CompareChoice.h"
#include "screens/CompareForm.h"
#include "tests/screens/MainScreenFixture.h"

namespace {

class CompareTest : public MainScreenFixture {
 protected:
  void CtrlClick(int row) const {
    QTest::mouseClick(List().viewport(), Qt::LeftButton, Qt::ControlModifier, PlaceOf(row));
  }
  void TellSelected() {
    QStringList ids;
    for (const qint32 id : List().Selected()) ids << QString::number(id);
    protocol.Step(u"selected: "_s + ids.join(u' '));
  }
};

TEST_F(CompareTest, TheListSelectsTwoAndNoOtherCommandActsOnThem) {
  StartLoaded({u"Bore"_s, u"Shaft"_s, u"Pin"_s, u"Cap"_s});
  const auto press = [this](QKeyCombination key, Answers answers = {}) {
    PressOn(List(), key, answers);
    TellSelected();
  };
  press(Qt::CTRL | Qt::Key_M);  // asks for the other one
  for (const int row : {0, 2}) {
    CtrlClick(row);  // the only one stays selected
    TellSelected();
  }
  for (const QKeyCombination key :
       {QKeyCombination(Qt::Key_Delete), QKeyCombination(Qt::Key_F2), Qt::CTRL | Qt::Key_E})
    press(key, {Answer::Ok});
  for (const char* command : {"Toolbar1_1", "mnuAddMeasurements"}) Trigger(command, {Answer::Ok});
  press(Qt::CTRL | Qt::Key_M);
  press(Qt::Key_Return);
  Trigger("mnuCompare");
  Elsewhere(u"UPDATE StatData SET UpperSpecLimit = 13 WHERE ID IN (1, 4)"_s);
  TellSelected();
  Elsewhere(u"DELETE FROM StatData WHERE ID = 1"_s);  // one is left
  for (const QKeyCombination key :
       {QKeyCombination(Qt::Key_Home), Qt::CTRL | Qt::Key_Down, Qt::CTRL | Qt::Key_Down,
        Qt::CTRL | Qt::Key_Space, QKeyCombination(Qt::Key_Up), Qt::SHIFT | Qt::Key_Down})
    press(key);
  CtrlClick(0);
  press(Qt::CTRL | Qt::Key_M, {Answer::Ok});
  ClickRow(1);
  Drag(*List().viewport(), PlaceOf(0), PlaceOf(2));  // a hand that shakes
  TellSelected();
}

TEST_F(CompareTest, TheOtherOneIsFoundAmongMany) {
  StartLoaded({u"Bore"_s, u"Shaft 1"_s, u"Shaft 2"_s});
  for (int time = 0; time < 2; ++time) Trigger("mnuSort_1");  // downwards, as the choice is then
  CompareChoice choice(1);
  choice.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&choice));
  protocol.Begin(u"The choice"_s, &choice);
  protocol.Tell(u"as it stands"_s);
  auto& list = Get<MainList>(choice, "listOther");
  PressOn(list, Qt::CTRL | Qt::Key_F);
  QTest::keyClicks(&Get(choice, "txtFind"), u"2"_s);
  PressOn(Get(choice, "txtFind"), Qt::Key_Return);
  EXPECT_EQ(choice.result(), QDialog::Accepted);
  EXPECT_EQ(choice.Chosen(), 3);
  choice.show();
  Enter(choice, "txtFind", u"nothing"_s);
  EXPECT_EQ(choice.Chosen(), 0);
  for (int time = 0; time < 2; ++time) PressOn(list, Qt::Key_Escape);  // shows all again first
}

TEST_F(CompareTest, ShowsAndSavesTheirPageAndFollowsTheLibrary) {
  StartLoaded({u"Bore"_s, u"Shaft"_s, u"Pin"_s, u"Short"_s});
  PagePrinting printing;
  CompareForm form(1, 2, printing);
  form.show();
  const auto scale = [&form](int graph) { return form.Page()->Page().Graph(graph).Scale().bottom(); };
  files.Expect(program.Path(u"page.pdf"_s));
  Get<QAction>(form, "Toolbar1_2_2").trigger();
  EXPECT_TRUE(files.last.folder.endsWith(u"/Bore and Shaft.pdf"));
  EXPECT_GT(QFile(program.Path(u"page.pdf"_s)).size(), 5000);
  files.Expect(program.Path(u"page.svg"_s));
  Get<QAction>(form, "Toolbar1_2_2").trigger();
  EXPECT_TRUE(ReadFile(program.Path(u"page.svg"_s)).contains("Printed: 2024-02-29"));

  protocol.Begin(u"The form"_s, &form);
  Elsewhere(u"UPDATE StatData SET \"Values\" = \"Values\" || '90,90,90,90,' WHERE ID = 2"_s);
  EXPECT_GT(scale(0), 90) << "the first one's chart shows the second one's scale";
  Click(form, "checkSameScale");
  EXPECT_LT(scale(0), 20);
  Elsewhere(u"UPDATE StatData SET UnitOfMeasurement = 'IN' WHERE ID = 1"_s);
  Elsewhere(u"DELETE FROM StatData WHERE ID = 1"_s);
  Click(form, "Toolbar1_4");
  EXPECT_FALSE(form.isVisible());
  form.show();
  PressOn(form, Qt::Key_Escape);
  Elsewhere(u"UPDATE StatData SET \"Values\" = '1,2,3,' WHERE ID = 4"_s);
  program.boxes.Expect(u"\"Short\" has fewer than 8 points."_s);
  EXPECT_EQ(CompareForm(3, 4, printing).exec(), QDialog::Rejected);
}

// What the chart screen goes through.
TEST_F(CompareTest, TheListTellsItsOrder) {
  StartLoaded({u"B 1"_s, u"A 1"_s, u"C"_s});
  Action("mnuSort_1").trigger();
  EXPECT_EQ(main->ListedIDs(), (std::vector<qint32>{2, 1, 3}));
  program.Execute(u"UPDATE StatData SET Description = 'D 1' WHERE ID = 2"_s);
  Fire(*main, "WatchTimer");
  Type(*main, "txtFind", u"1"_s);
  EXPECT_EQ(main->ListedIDs(), (std::vector<qint32>{1, 2})) << "sorted anew";
}

}  // namespace
