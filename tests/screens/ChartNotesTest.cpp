// Times, lots and notes on the chart screen: what the mouse tells, the axis, the months, and the form for a
// note.
#include <QTreeWidget>

#include "screens/NoteForm.h"
#include "tests/screens/ChartScreenFixture.h"

namespace {

class ChartNotesTest : public ChartScreenFixture {
 protected:
  // Eight more samples, of two points, at the time of the program's clock.
  void AddTimedPoints(size_t place = 0) {
    ASSERT_TRUE(DataObjectFunctions::AppendToDataObject(program.state.gDataCollection.at(place),
                                                        QStringList(8, u"10"_s)));
    data = program.state.gDataCollection.at(0);
  }
  void OpenActive() {
    Open();
    ASSERT_TRUE(QTest::qWaitForWindowActive(screen.get()));
  }
  void Hover(int number) {
    Step(u"point %1"_s.arg(number), [&] { QTest::mouseMove(view, PlaceOf(GraphId::XBar, number)); });
  }
  // In the form for a note on the chosen point, or the one that another key opens.
  void WithForm(const std::function<void(QWidget&)>& act, Qt::Key key = Qt::Key_N) {
    screen->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(screen.get()));
    InNextWindow([&](QWidget& form) {
      EXPECT_TRUE(QTest::qWaitForWindowActive(&form));
      protocol.Begin(u"The form"_s, &form);
      protocol.Tell(u"as it stands"_s);
      act(form);
      if (form.isVisible()) dynamic_cast<QDialog&>(form).done(QDialog::Rejected);
    });
    QTest::keyClick(screen.get(), key);
    protocol.Begin(u"The screen"_s, screen.get());
    protocol.Step(Info().text());
  }
  void TypeNote(const QWidget& form, const QString& text) {
    Step(text, [&] { QTest::keyClicks(&Get<QPlainTextEdit>(form, "txtNote"), text); });
  }
  void ChooseIn(const QWidget& form, const char* button, Answers answers = {}) {
    Step(
        QLatin1StringView(button), [&] { Click(form, button); }, answers);
  }
};

TEST_F(ChartNotesTest, ANoteIsWrittenShownChangedAndRemoved) {
  OpenActive();
  PressOn(*screen, Qt::Key_N, {Answer::Ok});
  for (const Qt::Key key : {Qt::Key_Home, Qt::Key_PageDown, Qt::Key_PageDown}) PressOn(*view, key);
  WithForm([this](QWidget& form) {
    TypeNote(form, u"new nozzle"_s);
    PressOn(Get<QPlainTextEdit>(form, "txtNote"), Qt::CTRL | Qt::Key_Return);
  });
  EXPECT_EQ(view->Page()->NotesOn(3).size(), 1u);
  WithForm([this](QWidget& form) {  // somebody else is faster; what is typed stays
    DataObjectFunctions::SetNote(*data, 8, u"new nozzle"_s, u"theirs"_s);
    TypeNote(form, u" again"_s);
    for (int time = 0; time < 2; ++time) ChooseIn(form, "cmdSave");
  });
  WithForm([this](QWidget& form) {
    TypeNote(form, u"lost?"_s);
    PressOn(form, Qt::Key_Escape, {Answer::Cancel});
    ChooseIn(form, "cmdRemove");
  });
  // Others' notes come in by themselves.
  DataObjectFunctions::SetNote(*data, 4, {}, u"seen by kim"_s);
  screen->LibraryChanged();
  Hover(2);
}

// Another program has written other values: the runs and notes wait in a list until somebody decides.
TEST_F(ChartNotesTest, WhatHasLostItsSamplesIsListedRemovedAndPutOnAnotherPoint) {
  OpenActive();
  EXPECT_FALSE(Get<QAction>(*screen, "Toolbar1_5_8").isEnabled());
  const QString before = data->DelimitedInputString();
  for (int i = 0; i < 3; ++i) AddTimedPoints();
  for (const auto& [sample, text] : {std::pair{0, u"stays"_s}, {40, u"new drum"_s}, {48, u"door open"_s}})
    DataObjectFunctions::SetNote(*data, sample, {}, text);
  ChangeElsewhere(u"\"Values\" = '%1'"_s.arg(before + u"9,9,9,9,"_s));
  OpenActive();
  Hover(1);
  WithForm(
      [this](QWidget& form) {
        ChooseIn(form, "cmdPlace");  // beside the note that is there
        ChooseIn(form, "cmdRemove", {Answer::No});
        PressOn(Get<QTreeWidget>(form, "listUnplaced"), Qt::Key_End);  // a run has no place
        ChooseIn(form, "cmdRemove", {Answer::Yes});
      },
      Qt::Key_U);
  WithForm([this](QWidget& form) {
    PressOn(Get<QComboBox>(form, "cboNote"), Qt::Key_Down);
    TypeNote(form, u" opened"_s);
    ChooseIn(form, "cmdSave");
  });
  WithForm([this](QWidget& form) { ChooseIn(form, "cmdRemoveAll", {Answer::Yes}); }, Qt::Key_U);
  EXPECT_FALSE(Get<QAction>(*screen, "Toolbar1_5_8").isEnabled());
  EXPECT_EQ(program.Rows(u"SELECT count(*) FROM SampleRun"_s)[0][0], 0);
}

TEST_F(ChartNotesTest, TimesStandAtTheAxisAndAMonthShowsItsPoints) {
  Open();
  EXPECT_FALSE(Get<QComboBox>(*screen, "cboAxis").isVisible()) << "nothing to show";
  program.clock.now = QDateTime(QDate(2026, 10, 31), QTime(23, 30));
  program.Insert(u"Bore"_s);
  ASSERT_TRUE(DataObjectFunctions::InitializeCDataCollection());
  for (const size_t place : {0U, 1U}) AddTimedPoints(place);
  OpenActive();
  Hover(12);
  PressOn(*screen, Qt::Key_T);
  const auto hasTimes = [this] {
    for (const auto& operation : Page().Graph(0).Operations())
      if (const auto* axis = std::get_if<ChartGraph::Axis>(&operation); axis && !axis->stretches.empty())
        return true;
    return false;
  };
  EXPECT_TRUE(hasTimes());
  Open();
  EXPECT_TRUE(hasTimes()) << "remembered";

  program.clock.now = QDateTime(QDate(2026, 11, 1), QTime(0, 30));
  Trigger("Toolbar1_5_5");
  Choose("cmdThisMonth");
  Choose("cmdLastMonth");
  EXPECT_TRUE(
      FileBy("Toolbar1_5_4", program.Path(u"month.svg"_s)).contains("Period: 2026-10-01 to 2026-10-31"));
  Choose("cmdAllPoints");
  Choose("cmdLastMonth");
  Choose("cmdNext");  // all of it, although it has points of that month too
}

}  // namespace
