// The chart screen, driven as a person drives it.
#include "screens/StatGraphics.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QLabel>
#include <QMimeData>

#include "core/CreateStatistics.h"
#include "core/DataObjectFunctions.h"
#include "screens/Indicators.h"
#include "screens/PageView.h"
#include "tests/support/RecordedFileDialogs.h"
#include "tests/support/TestProgram.h"
#include "tests/support/Widgets.h"

using namespace Qt::StringLiterals;
using MessageBox::Answer;

namespace {

struct TestPrinters : PrinterDialogs {
  explicit TestPrinters(bool installed) : hasPrinter(installed) {}
  bool hasPrinter;
  bool HasPrinter() override {
    if (printer) printer->setOutputFileName(paper);  // the printer stands for its paper
    return hasPrinter;
  }
  void PrinterSetup(QPrinter& chosen, QWidget*) override {
    chosen.setOutputFileName(u"/nowhere/setup.pdf"_s);
  }
  void PageSetup(QPrinter& chosen, QWidget*) override {
    chosen.setPageSize(QPageSize(QPageSize::Letter));
    if (!paper.isEmpty()) printer = &chosen;
  }
  QPrinter* printer = nullptr;
  QString paper;
};

class ChartScreenTest : public testing::Test {
 protected:
  ChartScreenTest() {
    program.state.gCurrentDataID = program.Insert(u"Shaft"_s);
    EXPECT_TRUE(DataObjectFunctions::InitializeCDataCollection());
    data = program.state.gDataCollection.at(0);  // ten points
  }

  void Open() {
    screen = std::make_unique<StatGraphics>(
        StatGraphics::Links{[this](QWidget*, const CDataPtr& copy) { Recalculate(*copy); },
                            [this](QWidget*) { AddAPoint(); }, [this](qint32 topic) { helpTopics << topic; },
                            23},
        printing);
    screen->resize(1200, 800);
    screen->show();
    view = &Get<PageView>(*screen, "PageView");
  }
  // What the recalculate screen does when the user has chosen a range.
  void Recalculate(CData& copy) {
    ++recalculations;
    if (whileRecalculating) whileRecalculating();
    copy.SetDataStopPoint(lastPoint);
    QCGlobalFunctions::ClearControlLimits(copy);
    program.state.gLimitsRecalculated = QCGlobalFunctions::CreateStatistics(copy);
  }
  // The collection's data set, and the limit on the page.
  const CData& Held() const { return *program.state.gDataCollection.at(0); }
  double DrawnLimit() const { return Page().Graph(0).DataSet(u"UCL Data Set"_s).at(0); }
  // Another program has changed the row, and the main window has brought it into the collection.
  void ChangeElsewhere(const QString& change) {
    program.Execute(u"UPDATE StatData SET "_s + change);
    ASSERT_TRUE(DataObjectFunctions::InitializeCDataCollection());
    screen->LibraryChanged();
  }
  void AddAPoint() {
    ++additions;
    DataObjectFunctions::AppendToDataObject(data, {u"10"_s, u"10"_s, u"10"_s, u"10"_s});
  }
  double StoredLimit() const { return program.Rows(u"SELECT XBarUCL FROM StatData"_s)[0][0].toDouble(); }
  void Close() { QTest::keyClick(screen.get(), Qt::Key_Escape); }
  void Press(Qt::Key key) { QTest::keyClick(view, key); }
  void Trigger(const char* entry) { Get<QAction>(*screen, entry).trigger(); }
  // The entry asks for a file, and gets it.
  QByteArray FileBy(const char* entry, const QString& path) {
    files.Expect(path);
    Trigger(entry);
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
  }
  const ChartPage& Page() const { return view->Page()->Page(); }
  QPoint CentreOf(GraphId graph) const {
    return Page().Geometry(int(graph), view->rect()).frame.center().toPoint();
  }

  TestProgram program;
  RecordedFileDialogs files;
  CDataPtr data;
  PagePrinting printing{std::make_unique<TestPrinters>(false)};
  QList<qint32> helpTopics;
  int additions = 0;
  int recalculations = 0;
  qint16 lastPoint = 6;
  std::function<void()> whileRecalculating;
  std::unique_ptr<StatGraphics> screen;
  PageView* view = nullptr;
};

TEST_F(ChartScreenTest, RefusesWhatItCannotShow) {
  const auto refuse = [this](QStringView reason) {
    program.boxes.Expect(reason);
    EXPECT_EQ(StatGraphics({}, printing).exec(), QDialog::Rejected);
  };
  data->SetNumberOfPlotPoints(7);
  refuse(u"A minimum of 8 data points are required");
  data->SetNumberOfPlotPoints(8);
  Open();
  EXPECT_TRUE(screen->isVisible());
  data->SetRBarUCL(1.7e308);
  refuse(u"Could not generate scaling data");
  program.state.gCurrentDataID = 99;
  refuse(u"error attempting to get the current data for the item selected: \r\n");
}

TEST_F(ChartScreenTest, ShowsTheVerdict) {
  data->SetRuleViolation(3);  // left over from an older verdict
  data->SetProcessState(4);
  for (const bool inControl : {true, false}) {
    data->SetIsInControl(inControl);
    Open();
    EXPECT_EQ(TextOf(*screen, "panelRuleViolationValue"), inControl ? u"<none>" : u"3");
    EXPECT_TRUE(TextOf(*screen, "panelMessage")
                    .startsWith(inControl ? u"No rule violations." : u"DETECTION RULE THREE: "));
    EXPECT_EQ(Get<Led>(*screen, "orvLEDControl1").ColorValue(), inControl ? Led::Go : Led::Stop);
    EXPECT_EQ(Get<ProcessStateIndicator>(*screen, "ProcessStateIndicator1").Value(), 4);
  }
  ASSERT_TRUE(QTest::qWaitForWindowActive(screen.get()));
  Click(*screen, "Toolbar1_6");
  QTest::keyClick(screen.get(), Qt::Key_F1);
  EXPECT_EQ(helpTopics, QList<qint32>({0, 23}));
}

TEST_F(ChartScreenTest, DrawsWhatItCanOfABrokenDataSet) {
  data->SetDelimitedInputString(u"1,2,x,"_s);
  program.boxes.Expect(u"StatGraphics::SetupControlCharts failed");
  program.boxes.Expect(u"StatGraphics::DrawHistogramGraph failed");
  Open();
  EXPECT_TRUE(screen->isVisible());
  const auto& summary = Page().Graph(int(GraphId::Text)).Operations();
  EXPECT_GT(std::get<ChartGraph::Table>(summary.at(0)).lines.size(), 9u);
}

TEST_F(ChartScreenTest, RecalculatesFromFivePointsOnAndSavesSilently) {
  Open();
  Click(*screen, "Toolbar1_4");
  const double limit = DrawnLimit();
  EXPECT_NE(Held().XBarUCL(), limit) << "not before it is saved";
  Click(*screen, "Toolbar1_2");
  EXPECT_EQ(StoredLimit(), limit);
  EXPECT_EQ(Held().XBarUCL(), limit);
  EXPECT_EQ(TextOf(*screen, "lblNews"), u"saved 13:45:59");
  EXPECT_EQ(program.screen.calls, QStringList(u"UpdateListRow Shaft"_s));

  EXPECT_EQ(recalculations, 1);
  Close();  // nothing to ask any more
  EXPECT_FALSE(screen->isVisible());
}

TEST_F(ChartScreenTest, AsksBeforeNewLimitsAreLost) {
  const double before = data->XBarUCL();
  const double stored = StoredLimit();
  Open();
  Click(*screen, "Toolbar1_4");
  const double after = DrawnLimit();
  ASSERT_NE(after, before);
  program.boxes.Expect(Answer::Cancel, u"Data has changed");
  Close();
  EXPECT_TRUE(screen->isVisible());
  EXPECT_EQ(DrawnLimit(), after);

  const auto texts = [this] {
    QStringList all;
    for (const auto& operation : Page().Graph(int(GraphId::Text)).Operations())
      if (const auto* text = std::get_if<ChartGraph::Text>(&operation)) all << text->text;
    return all;
  };
  const QStringList written = texts();
  TestProgram::FailAt(u"commit"_s);
  program.boxes.Expect(u"the disk is full");
  Click(*screen, "Toolbar1_2");
  for (int time = 0; time < 2; ++time) Click(*screen, "checkFitScale");
  EXPECT_EQ(texts(), written) << "modified as long ago as before";
  program.boxes.Expect(Answer::Yes);
  program.boxes.Expect(u"the disk is full");
  Close();
  TestProgram::FailAt({});
  EXPECT_TRUE(screen->isVisible()) << "what could not be saved is not thrown away";

  program.boxes.Expect(Answer::No);
  Close();
  EXPECT_FALSE(screen->isVisible());
  EXPECT_EQ(StoredLimit(), stored);
  EXPECT_EQ(Held().XBarUCL(), before);

  Open();
  Click(*screen, "Toolbar1_4");
  program.boxes.Expect(Answer::Yes);
  Click(*screen, "Toolbar1_7");
  EXPECT_FALSE(screen->isVisible());
  EXPECT_EQ(StoredLimit(), after);
}

// What was known of the row before the last save would make the next one a conflict, or bring old limits
// back.
TEST_F(ChartScreenTest, NoAfterASaveGoesBackToWhatWasSaved) {
  Open();
  Click(*screen, "Toolbar1_4");
  Click(*screen, "Toolbar1_2");
  const double saved = StoredLimit();
  lastPoint = 8;
  Click(*screen, "Toolbar1_4");
  ASSERT_NE(DrawnLimit(), saved);
  program.boxes.Expect(Answer::No);
  Close();
  EXPECT_EQ(Held().XBarUCL(), saved);
  Open();
  Click(*screen, "Toolbar1_2");
  EXPECT_EQ(StoredLimit(), saved);
}

TEST_F(ChartScreenTest, NewLimitsNeverReplaceWhatAnotherProgramWrote) {
  Open();
  Click(*screen, "Toolbar1_4");
  const double mine = DrawnLimit();
  program.Execute(u"UPDATE StatData SET \"Values\" = \"Values\" || '10,10,10,10,'"_s);
  Click(*screen, "Toolbar1_2");
  EXPECT_EQ(TextOf(*screen, "lblNews"), u"saved 13:45:59. 4 values were added meanwhile.");
  EXPECT_EQ(TextOf(*screen, "SampleQty"), u"44");
  EXPECT_EQ(StoredLimit(), mine);

  lastPoint = 8;
  Click(*screen, "Toolbar1_4");
  program.Execute(u"UPDATE StatData SET XBarUCL = 99"_s);
  const auto answer = [](const char* button) {
    QTimer::singleShot(0, [button] { Click(*QApplication::activeModalWidget(), button); });
  };
  answer("cmdCancel");
  Click(*screen, "Toolbar1_2");
  EXPECT_EQ(StoredLimit(), 99);
  program.boxes.Expect(Answer::Yes, u"Data has changed");
  answer("cmdCancel");
  Close();
  EXPECT_TRUE(screen->isVisible());
  answer("cmdTheirs");
  Click(*screen, "Toolbar1_2");
  EXPECT_EQ(DrawnLimit(), 99);

  Click(*screen, "Toolbar1_4");
  program.Execute(u"DELETE FROM StatData"_s);
  program.boxes.Expect(Answer::No, u"as a new data set?");
  Click(*screen, "Toolbar1_2");
  EXPECT_TRUE(program.Rows(u"SELECT * FROM StatData"_s).empty());
  EXPECT_TRUE(screen->isVisible());
}

TEST_F(ChartScreenTest, FollowsTheLibraryInItsPlace) {
  Open();
  QTest::mouseClick(view, Qt::LeftButton, {}, CentreOf(GraphId::R));
  Click(*screen, "Toolbar1_3");
  Press(Qt::Key_End);
  const QWidget* focus = screen->focusWidget();
  screen->LibraryChanged();
  EXPECT_EQ(TextOf(*screen, "lblNews"), QString()) << "nothing has changed";
  ChangeElsewhere(u"\"Values\" = \"Values\" || '10,11,12,13,'"_s);
  EXPECT_EQ(TextOf(*screen, "lblNews"), u"updated 13:45:59");
  EXPECT_EQ(TextOf(*screen, "SampleQty"), u"44");
  EXPECT_EQ(view->Page()->PointCount(GraphId::R), 11);
  EXPECT_EQ(Page().BlownUpGraph(), int(GraphId::R));
  EXPECT_TRUE(TextOf(*view, "lblPointInfo").startsWith(u"Range 10: "));
  EXPECT_EQ(screen->focusWidget(), focus);
  ChangeElsewhere(u"\"Values\" = '1,2,3,4,5,6,7,8,'"_s);
  EXPECT_EQ(view->Page()->PointCount(GraphId::R), 11) << "too few to be drawn";
}

TEST_F(ChartScreenTest, NewLimitsAreNotRefreshedAway) {
  Open();
  whileRecalculating = [this] { ChangeElsewhere(u"XBarUCL = 99"_s); };
  Click(*screen, "Toolbar1_4");
  EXPECT_NE(DrawnLimit(), 99);
  EXPECT_TRUE(TextOf(*screen, "lblNews").contains(u"somebody else changed"_s));
  program.boxes.Expect(Answer::No);
  Close();
  EXPECT_EQ(Held().XBarUCL(), 99);
}

TEST_F(ChartScreenTest, AddedMeasurementsAreJudgedByTheLimitsInTheLibrary) {
  Open();
  Trigger("Toolbar1_4");
  program.boxes.Expect(Answer::Cancel, u"Data");
  Trigger("Toolbar1_5_3");
  EXPECT_EQ(additions, 0) << "new limits would have been lost";
  program.boxes.Expect(Answer::No);
  Trigger("Toolbar1_5_3");
  EXPECT_EQ(Held().NumberOfPlotPoints(), 11);
  EXPECT_TRUE(Get<QWidget>(*screen, "StatSummary1").isVisible());
  Close();  // and nothing is asked
  EXPECT_FALSE(screen->isVisible());
}

TEST_F(ChartScreenTest, ZoomsTheSelectedGraph) {
  Open();
  Click(*screen, "Toolbar1_3");
  EXPECT_FALSE(view->IsZoomed()) << "nothing is selected yet";
  QTest::mouseClick(view, Qt::LeftButton, {}, CentreOf(GraphId::R));
  Click(*screen, "Toolbar1_3");
  EXPECT_EQ(TextOf(*screen, "Toolbar1_3").remove(u'&'), u"Zoom Out");
  Click(*screen, "checkFitScale");
  EXPECT_EQ(Page().BlownUpGraph(), int(GraphId::R)) << "another scale keeps the zoom";
  EXPECT_GT(Page().Graph(0).Scale().top(), 0);

  Press(Qt::Key_Return);
  EXPECT_FALSE(view->IsZoomed());
  EXPECT_EQ(TextOf(*screen, "Toolbar1_3").remove(u'&'), u"Zoom In");
  for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Right, Qt::Key_Down}) Press(key);
  EXPECT_EQ(view->Page()->Selected(), GraphId::Text);
  QTest::mouseDClick(view, Qt::LeftButton, {}, CentreOf(GraphId::Histogram));
  EXPECT_EQ(Page().BlownUpGraph(), int(GraphId::Text));
}

TEST_F(ChartScreenTest, ExplainsThePointUnderTheMouse) {
  CData::ViolatingPointLists violations;
  violations[0] = violations[3] = {3};
  data->SetViolatingPoints(violations);
  Open();
  const auto& info = Get<QLabel>(*view, "lblPointInfo");
  const auto hover = [&](int number) {
    QTest::mouseMove(view, view->Page()->Point(GraphId::XBar, number, view->rect())->position.toPoint());
    return info.text().split(u'\n');
  };
  const QStringList lines = hover(3);
  ASSERT_EQ(lines.size(), 3);
  EXPECT_EQ(lines[0], u"Average 3: %1"_s.arg(data->XBarOutputString().section(u',', 2, 2).toDouble()));
  EXPECT_TRUE(lines[1].startsWith(u"DETECTION RULE ONE: "));
  EXPECT_TRUE(lines[2].startsWith(u"DETECTION RULE FOUR: "));
  EXPECT_TRUE(info.isVisible() && view->rect().contains(info.geometry()));
  EXPECT_TRUE(hover(4)[0].startsWith(u"Average 4: "));
  QTest::mouseMove(view, CentreOf(GraphId::Text));
  EXPECT_FALSE(info.isVisible());
  QTest::mouseClick(view, Qt::LeftButton, {}, CentreOf(GraphId::R));
  Press(Qt::Key_End);
  EXPECT_TRUE(info.text().startsWith(u"Range 10: "));
}

TEST_F(ChartScreenTest, Exports) {
  Open();
  for (const QString& none : {QString(), u"x"_s}) {
    files.Expect(none);
    Trigger("Toolbar1_5_1");
    EXPECT_FALSE(QFile::exists(u"x"_s));
  }
  for (int time = 0; time < 2; ++time)
    EXPECT_EQ(FileBy("Toolbar1_5_1", program.Path(u"shaft.csf"_s)).count("\r\n"), 28);
  files.Expect(program.Path(u"missing/shaft.csf"_s));
  program.boxes.Expect(u"StatGraphics::ExportQCReport failed with error: ");
  Trigger("Toolbar1_5_1");
}

TEST_F(ChartScreenTest, CopiesAPictureAndADrawing) {
  Open();
  program.boxes.Expect(u"The graphics page has been copied.");
  Trigger("Toolbar1_5_2");
  const QMimeData* formats = QGuiApplication::clipboard()->mimeData();
  EXPECT_GE(formats->imageData().value<QImage>().width(), 1920);
  EXPECT_TRUE(formats->data(u"image/svg+xml"_s).contains("<svg"));
  EXPECT_TRUE(formats->data(u"application/pdf"_s).startsWith("%PDF"));
}

TEST_F(ChartScreenTest, PrintsToAFileWhereThereIsNoPrinter) {
  Open();
  const auto noPrinter = u"No printer is installed on this system.";
  program.boxes.Expect(noPrinter);
  Trigger("Toolbar1_1_2");
  program.boxes.Expect(Answer::No, noPrinter);
  Trigger("Toolbar1_1_1");
  program.boxes.Expect(Answer::Yes, noPrinter);
  EXPECT_TRUE(FileBy("Toolbar1_1_1", program.Path(u"a4.pdf"_s)).contains("/MediaBox [0 0 842"));
  EXPECT_TRUE(files.last.folder.endsWith(u"/Shaft.pdf"));
  Trigger("Toolbar1_1_3");
  EXPECT_TRUE(FileBy("Toolbar1_1_1", program.Path(u"letter.pdf"_s)).contains("/MediaBox [0 0 792"));
  files.Expect(program.Path(u"missing/a.pdf"_s));
  program.boxes.Expect(u"StatGraphics::PrintPage failed with error: ");
  Trigger("Toolbar1_1_1");
}

TEST_F(ChartScreenTest, PrintsOnThePrinterThatIsSetUp) {
  auto printers = std::make_unique<TestPrinters>(true);
  TestPrinters& desk = *printers;
  printing = PagePrinting(std::move(printers));
  Open();
  desk.paper = program.Path(u"paper"_s);
  Trigger("Toolbar1_1_3");
  Trigger("Toolbar1_1_1");  // and no file is asked for
  QFile paper(desk.paper);
  ASSERT_TRUE(paper.open(QIODevice::ReadOnly));
  const QByteArray printed = paper.readAll();
  EXPECT_TRUE(printed.contains("/MediaBox [0 0 792")) << "landscape";
  EXPECT_GT(printed.size(), 5000);
  EXPECT_EQ(desk.printer->docName(), u"Shaft");
  desk.paper.clear();
  Trigger("Toolbar1_1_2");  // to a file
  files.Expect({});
  Trigger("Toolbar1_1_1");
  EXPECT_EQ(files.last.folder, u"/nowhere/Shaft.pdf");
}

}  // namespace
