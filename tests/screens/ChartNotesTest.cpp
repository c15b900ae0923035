// Times, lots and notes on the chart screen: what the mouse tells, the axis, the months, and the form for a
// note.
#include <QComboBox>

#include "screens/NoteForm.h"
#include "tests/screens/ChartScreenFixture.h"

namespace {

class ChartNotesTest : public ChartScreenFixture {
 protected:
  // Eight more samples, of two points, at the time of the program's clock.
  void AddTimedPoints() {
    ASSERT_TRUE(
        DataObjectFunctions::AppendToDataObject(data, QString(u"10,"_s).repeated(8).chopped(1).split(u',')));
    data = program.state.gDataCollection.at(0);
  }
  void OpenActive() {
    Open();
    ASSERT_TRUE(QTest::qWaitForWindowActive(screen.get()));
  }
  void Hover(int number) { QTest::mouseMove(view, PlaceOf(GraphId::XBar, number)); }
  QString Noted(qsizetype sample) const {
    const Trace::Record record = program.state.gLibrary->TraceOf(*data);
    const Trace::Note* note = record.NoteAt(sample);
    return note ? note->text : QString();
  }
  void ByKey(const std::function<void(QWidget&)>& act) {
    screen->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(screen.get()));
    InNextWindow([&act](QWidget& form) {
      EXPECT_TRUE(QTest::qWaitForWindowActive(&form));
      act(form);
      if (!form.isVisible()) return;
      ADD_FAILURE() << "still open: " << TextOf(form, "lblNews").toStdString();
      dynamic_cast<QDialog&>(form).done(QDialog::Rejected);
    });
    QTest::keyClick(screen.get(), Qt::Key_N);
  }
  static QPlainTextEdit& Box(const QWidget& form) { return Get<QPlainTextEdit>(form, "txtNote"); }
};

TEST_F(ChartNotesTest, ANoteIsWrittenShownChangedAndRemoved) {
  OpenActive();
  program.boxes.Expect(u"Choose a point first");
  QTest::keyClick(screen.get(), Qt::Key_N);
  Hover(3);
  ByKey([](QWidget& form) {
    EXPECT_EQ(TextOf(form, "lblPoint"), u"Point 3");
    EXPECT_TRUE(TextOf(form, "lblSamples").startsWith(u"Samples: "));
    EXPECT_FALSE(Get<QPushButton>(form, "cmdRemove").isEnabled());
    QTest::keyClicks(&Box(form), u"new nozzle"_s);
    QTest::keyClick(&Box(form), Qt::Key_Return, Qt::ControlModifier);
  });
  EXPECT_EQ(Noted(8), u"new nozzle") << "on the first sample of the third four";
  EXPECT_TRUE(Info().text().contains(u"Note A ("_s) && Info().text().endsWith(u"): new nozzle"));
  EXPECT_EQ(view->Page()->NotesOn(3).size(), 1u);

  // Somebody else is faster; what is typed stays.
  ByKey([this](QWidget& form) {
    EXPECT_EQ(Box(form).toPlainText(), u"new nozzle");
    DataObjectFunctions::SetNote(*data, 8, u"new nozzle"_s, u"theirs"_s);
    QTest::keyClicks(&Box(form), u" again"_s);
    Click(form, "cmdSave");
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(Noted(8), u"theirs");
    EXPECT_TRUE(TextOf(form, "lblNews").contains(u"\u201ctheirs\u201d"));
    EXPECT_EQ(Box(form).toPlainText(), u"new nozzle again");
    Click(form, "cmdSave");
  });
  EXPECT_EQ(Noted(8), u"new nozzle again");
  ByKey([this](QWidget& form) {
    Box(form).setPlainText(u"lost?"_s);
    program.boxes.Expect(Answer::Cancel);
    QTest::keyClick(&form, Qt::Key_Escape);
    EXPECT_TRUE(form.isVisible());
    Click(form, "cmdRemove");
  });
  EXPECT_EQ(Noted(8), QString());
  EXPECT_FALSE(Info().text().contains(u"Note A"));

  // Others' notes come in by themselves.
  DataObjectFunctions::SetNote(*data, 4, {}, u"seen by kim"_s);
  screen->LibraryChanged();
  Hover(2);
  EXPECT_TRUE(Info().text().endsWith(u": seen by kim"));
}

TEST_F(ChartNotesTest, TimesStandAtTheAxisAndAMonthShowsItsPoints) {
  Open();
  EXPECT_FALSE(Get<QComboBox>(*screen, "cboAxis").isVisible()) << "nothing to show";
  program.clock.now = QDateTime(QDate(2026, 10, 31), QTime(23, 30));
  AddTimedPoints();
  OpenActive();
  Hover(12);
  EXPECT_TRUE(Info().text().contains(u"2026-10-31 23:30")) << Info().text().toStdString();
  QTest::keyClick(screen.get(), Qt::Key_T);
  EXPECT_EQ(Get<QComboBox>(*screen, "cboAxis").currentIndex(), 1);
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
  Click(*screen, "cmdThisMonth");
  EXPECT_EQ(view->Page()->ShownPoints().first, 1);
  EXPECT_EQ(TextOf(*screen, "lblNews"), u"No point has a time in the period 2026-11-01 to 2026-11-30.");
  Click(*screen, "cmdLastMonth");
  EXPECT_EQ(view->Page()->ShownPoints().first, 11);
  EXPECT_EQ(view->Page()->ShownPoints().last, 12);
  EXPECT_TRUE(
      FileBy("Toolbar1_5_4", program.Path(u"month.svg"_s)).contains("Period: 2026-10-01 to 2026-10-31"));
  Click(*screen, "cmdAllPoints");
  EXPECT_EQ(view->Page()->ShownPoints().last, 12);
  EXPECT_EQ(view->Page()->ShownPoints().first, 1);
}

}  // namespace
