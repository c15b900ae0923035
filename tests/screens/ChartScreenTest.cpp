// The chart screen, driven as a person drives it.
#include "charts/StatGraphics.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QLabel>
#include <QMimeData>
#include <QTest>
#include <QToolButton>

#include "charts/PageView.h"
#include "platform/ui/Indicators.h"
#include "stats/CreateStatistics.h"
#include "tests/support/RecordedFileDialogs.h"
#include "tests/support/TestProgram.h"

using namespace Qt::StringLiterals;
using MessageBox::Answer;

namespace {

struct TestPrinters : PrinterDialogs {
  explicit TestPrinters(bool installed) : hasPrinter(installed) {}
  bool hasPrinter;
  bool HasPrinter() override { return hasPrinter; }
  void PrinterSetup(QPrinter& printer, QWidget*) override {
    printer.setOutputFileName(u"/nowhere/setup.pdf"_s);
  }
  void PageSetup(QPrinter& printer, QWidget*) override { printer.setPageSize(QPageSize(QPageSize::Letter)); }
};

class ChartScreenTest : public testing::Test {
 protected:
  ChartScreenTest() {
    program.state.gDataCollection = {data};
    program.state.gCurrentDataID = program.Insert(u"Shaft"_s);
    data->SetID(program.state.gCurrentDataID);
    QCGlobalFunctions::CreateStatistics(*data);  // ten points
  }

  std::unique_ptr<StatGraphics> Open() {
    auto screen =
        std::make_unique<StatGraphics>(StatGraphics::Links{[this](QWidget*) { Recalculate(); },
                                                           [this](qint32 topic) { helpTopics << topic; }, 23},
                                       printing);
    screen->resize(1200, 800);
    screen->show();
    return screen;
  }
  // What the recalculate screen does when the user has chosen a range.
  void Recalculate() {
    ++recalculations;
    data->SetDataStopPoint(6);
    QCGlobalFunctions::ClearControlLimits(*data);
    program.state.gLimitsRecalculated = QCGlobalFunctions::CreateStatistics(*data);
  }
  double StoredLimit() const {
    return program.Rows(u"SELECT XBarUCL FROM StatData"_s).at(0).at(0).toDouble();
  }

  static void Click(const QWidget& screen, int button) {
    QTest::mouseClick(screen.findChild<QToolButton*>(u"Toolbar1_%1"_s.arg(button)), Qt::LeftButton);
  }
  static void Choose(const QWidget& screen, int button, int entry) {
    screen.findChild<QAction*>(u"Toolbar1_%1_%2"_s.arg(button).arg(entry))->trigger();
  }
  static QString ZoomCaption(const QWidget& screen) {
    return screen.findChild<QToolButton*>(u"Toolbar1_3"_s)->text().remove(u'&');
  }
  static PageView& View(const QWidget& screen) { return *screen.findChild<PageView*>(); }
  static QString LabelText(const QWidget& screen, const QString& name) {
    return screen.findChild<QLabel*>(name)->text();
  }
  static QPoint CentreOf(const PageView& view, GraphId graph) {
    return view.Page()->Page().Geometry(int(graph), view.rect()).frame.center().toPoint();
  }

  TestProgram program;
  RecordedFileDialogs files;
  CDataPtr data = TestProgram::NewDataSet(u"Shaft"_s);
  PagePrinting printing{std::make_unique<TestPrinters>(false)};
  QList<qint32> helpTopics;
  int recalculations = 0;
};

TEST_F(ChartScreenTest, RefusesWhatItCannotShow) {
  const auto refusal = [this] {
    program.boxes.Expect();
    EXPECT_EQ(StatGraphics({}, printing).exec(), QDialog::Rejected);
    return program.boxes.Take().text;
  };
  data->SetNumberOfPlotPoints(7);
  EXPECT_EQ(refusal(), u"A minimum of 8 data points are required"_s);
  data->SetNumberOfPlotPoints(8);
  EXPECT_TRUE(Open()->isVisible());
  data->SetRBarUCL(2e7);
  EXPECT_EQ(refusal(), u"Could not generate scaling data"_s);
  program.state.gCurrentDataID = 99;
  EXPECT_TRUE(
      refusal().startsWith(u"error attempting to get the current data for the item selected: \r\n"_s));
}

TEST_F(ChartScreenTest, ShowsTheVerdict) {
  data->SetRuleViolation(3);  // left over from an older verdict
  data->SetIsInControl(true);
  data->SetProcessState(4);
  auto screen = Open();
  ASSERT_TRUE(QTest::qWaitForWindowActive(screen.get()));
  Click(*screen, 6);
  QTest::keyClick(screen.get(), Qt::Key_F1);
  EXPECT_EQ(helpTopics, QList<qint32>({0, 23}));
  EXPECT_EQ(screen->windowTitle(), u"Kestrel Graphics Screen - Control Charting"_s);
  EXPECT_EQ(LabelText(*screen, u"panelRuleViolationValue"_s), u"<none>"_s);
  EXPECT_EQ(LabelText(*screen, u"panelMessage"_s), u"No rule violations. The process is in control."_s);
  EXPECT_EQ(screen->findChild<Led*>()->ColorValue(), 3);
  EXPECT_EQ(screen->findChild<ProcessStateIndicator*>()->Value(), 4);

  data->SetIsInControl(false);
  screen = Open();
  EXPECT_EQ(LabelText(*screen, u"panelRuleViolationValue"_s), u"3"_s);
  EXPECT_TRUE(LabelText(*screen, u"panelMessage"_s).startsWith(u"DETECTION RULE THREE: "_s));
  EXPECT_EQ(screen->findChild<Led*>()->ColorValue(), 4);
}

TEST_F(ChartScreenTest, DrawsWhatItCanOfABrokenDataSet) {
  data->SetXBarOutputString(u"1,2,3"_s);
  data->SetHistogramLabelsOutputString(u"1,2,3"_s);
  program.boxes.Expect();
  program.boxes.Expect();
  const auto screen = Open();
  EXPECT_TRUE(screen->isVisible());
  EXPECT_TRUE(program.boxes.Take().text.startsWith(u"StatGraphics::SetupControlCharts failed"_s));
  EXPECT_TRUE(program.boxes.Take().text.startsWith(u"StatGraphics::DrawHistogramGraph failed"_s));
  EXPECT_GT(View(*screen).Page()->Page().Graph(int(GraphId::Text)).Operations().size(), 9u);
}

TEST_F(ChartScreenTest, RecalculatesFromFivePointsOnAndSavesSilently) {
  const auto screen = Open();
  Click(*screen, 4);
  const double limit = data->XBarUCL();
  EXPECT_EQ(View(*screen).Page()->Page().Graph(0).DataSet(u"UCL Data Set"_s).at(0), limit);
  Click(*screen, 2);
  EXPECT_EQ(StoredLimit(), limit);
  EXPECT_EQ(program.screen.calls, QStringList(u"UpdateListRow Shaft"_s));

  data->SetNumberOfPlotPoints(4);
  program.boxes.Expect();
  Click(*screen, 4);
  EXPECT_EQ(recalculations, 1);
  EXPECT_TRUE(program.boxes.Take().text.startsWith(u"There are not enough data points to recalculate"_s));
  QTest::keyClick(screen.get(), Qt::Key_Escape);  // nothing to ask any more
  EXPECT_FALSE(screen->isVisible());
}

TEST_F(ChartScreenTest, AsksBeforeNewLimitsAreLost) {
  const double before = data->XBarUCL();
  const double stored = StoredLimit();
  auto screen = Open();
  Click(*screen, 4);
  const double after = data->XBarUCL();
  ASSERT_NE(after, before);

  program.boxes.Expect(Answer::Cancel);
  QTest::keyClick(screen.get(), Qt::Key_Escape);
  EXPECT_EQ(program.boxes.Take().text, u"Data has changed"_s);
  EXPECT_TRUE(screen->isVisible());
  EXPECT_EQ(data->XBarUCL(), after);

  program.boxes.Expect(Answer::Yes);
  program.boxes.Expect();
  Connection::FaultHook = [](const QString&) { throw std::runtime_error("disk full"); };
  screen->close();
  Connection::FaultHook = nullptr;
  EXPECT_TRUE(screen->isVisible()) << "what could not be saved is not thrown away";

  program.boxes.Expect(Answer::No);
  screen->close();
  EXPECT_FALSE(screen->isVisible());
  EXPECT_EQ(StoredLimit(), stored);
  EXPECT_EQ(data->XBarUCL(), before);

  screen = Open();
  Click(*screen, 4);
  program.boxes.Expect(Answer::Yes);
  Click(*screen, 7);
  EXPECT_FALSE(screen->isVisible());
  EXPECT_EQ(StoredLimit(), after);
}

TEST_F(ChartScreenTest, ZoomsTheSelectedGraph) {
  const auto screen = Open();
  PageView& view = View(*screen);
  Click(*screen, 3);
  EXPECT_FALSE(view.IsZoomed()) << "nothing is selected yet";
  QTest::mouseClick(&view, Qt::LeftButton, {}, CentreOf(view, GraphId::R));
  Click(*screen, 3);
  EXPECT_EQ(view.Page()->Page().BlownUpGraph(), int(GraphId::R));
  EXPECT_EQ(ZoomCaption(*screen), u"Zoom Out"_s);

  QTest::mouseClick(screen->findChild<QCheckBox*>(u"checkFitScale"_s), Qt::LeftButton, {}, QPoint(8, 8));
  EXPECT_EQ(view.Page()->Page().BlownUpGraph(), int(GraphId::R)) << "another scale keeps the zoom";
  EXPECT_GT(view.Page()->Page().Graph(0).Scale().top(), 0);

  QTest::keyClick(&view, Qt::Key_Return);
  EXPECT_FALSE(view.IsZoomed());
  EXPECT_EQ(ZoomCaption(*screen), u"Zoom In"_s);
  for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Right, Qt::Key_Down}) QTest::keyClick(&view, key);
  EXPECT_EQ(view.Page()->Selected(), GraphId::Text);
  QTest::mouseDClick(&view, Qt::LeftButton, {}, CentreOf(view, GraphId::Histogram));
  EXPECT_EQ(view.Page()->Page().BlownUpGraph(), int(GraphId::Text));
}

TEST_F(ChartScreenTest, ExplainsThePointUnderTheMouse) {
  CData::ViolatingPointLists violations;
  violations[0] = violations[3] = {3};
  data->SetViolatingPoints(violations);
  const auto screen = Open();
  PageView& view = View(*screen);
  auto* info = view.findChild<QLabel*>(u"lblPointInfo"_s);
  const auto hover = [&](int number) {
    QTest::mouseMove(&view, view.Page()->Point(GraphId::XBar, number, view.rect())->position.toPoint());
    return info->text();
  };
  const QString value = data->XBarOutputString().section(u',', 2, 2);
  const QStringList lines = hover(3).split(u'\n');
  ASSERT_EQ(lines.size(), 3);
  EXPECT_EQ(lines[0], u"Average 3: %1"_s.arg(value.toDouble()));
  EXPECT_TRUE(lines[1].startsWith(u"DETECTION RULE ONE: "_s));
  EXPECT_TRUE(lines[2].startsWith(u"DETECTION RULE FOUR: "_s));
  EXPECT_TRUE(info->isVisible());
  EXPECT_TRUE(view.rect().contains(info->geometry()));
  EXPECT_TRUE(hover(4).startsWith(u"Average 4: "_s));
  QTest::mouseMove(&view, CentreOf(view, GraphId::Text));
  EXPECT_FALSE(info->isVisible());

  QTest::mouseClick(&view, Qt::LeftButton, {}, CentreOf(view, GraphId::R));
  QTest::keyClick(&view, Qt::Key_End);
  EXPECT_TRUE(info->text().startsWith(u"Range 10: "_s));
}

TEST_F(ChartScreenTest, Exports) {
  const auto screen = Open();
  files.Expect({});
  Choose(*screen, 5, 1);
  EXPECT_EQ(QDir::cleanPath(files.last.folder), QCoreApplication::applicationDirPath() + u"/Dat"_s);
  files.Expect(u"x"_s);
  Choose(*screen, 5, 1);
  EXPECT_FALSE(QFile::exists(u"x"_s));

  QFile file(program.Path(u"shaft.csf"_s));
  for (int time = 0; time < 2; ++time) {
    files.Expect(file.fileName());
    Choose(*screen, 5, 1);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll().count("\r\n"), 28);
    file.close();
  }
  files.Expect(program.Path(u"missing/shaft.csf"_s));
  program.boxes.Expect();
  Choose(*screen, 5, 1);
  EXPECT_TRUE(program.boxes.Take().text.startsWith(u"StatGraphics::ExportQCReport failed with error: "_s));
}

TEST_F(ChartScreenTest, CopiesAPictureAndADrawing) {
  const auto screen = Open();
  program.boxes.Expect();
  Choose(*screen, 5, 2);
  EXPECT_EQ(program.boxes.Take().text, u"The graphics page has been copied."_s);
  const QMimeData* formats = QGuiApplication::clipboard()->mimeData();
  ASSERT_TRUE(formats->hasImage());
  EXPECT_GE(formats->imageData().value<QImage>().width(), 1920);
  EXPECT_TRUE(formats->data(u"image/svg+xml"_s).contains("<svg"));
  EXPECT_TRUE(formats->data(u"application/pdf"_s).startsWith("%PDF"));
}

TEST_F(ChartScreenTest, PrintsToAFileWhereThereIsNoPrinter) {
  const auto screen = Open();
  program.boxes.Expect();
  Choose(*screen, 1, 2);
  EXPECT_EQ(program.boxes.Take().text, u"No printer is installed on this system."_s);
  program.boxes.Expect(Answer::No);
  Choose(*screen, 1, 1);
  EXPECT_TRUE(program.boxes.Take().text.startsWith(u"No printer is installed on this system."_s));

  const auto printed = [&](const QString& path) {
    files.Expect(path);
    Choose(*screen, 1, 1);
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
  };
  program.boxes.Expect(Answer::Yes);
  EXPECT_TRUE(printed(program.Path(u"a4.pdf"_s)).contains("/MediaBox [0 0 842"));
  program.boxes.Take();
  EXPECT_TRUE(files.last.folder.endsWith(u"/Shaft.pdf"_s));
  Choose(*screen, 1, 3);
  EXPECT_TRUE(printed(program.Path(u"letter.pdf"_s)).contains("/MediaBox [0 0 792"));

  files.Expect(program.Path(u"missing/a.pdf"_s));
  program.boxes.Expect();
  Choose(*screen, 1, 1);
  EXPECT_TRUE(program.boxes.Take().text.startsWith(u"StatGraphics::PrintPage failed with error: "_s));

  PagePrinting withPrinter(std::make_unique<TestPrinters>(true));
  StatGraphics another({}, withPrinter);
  Choose(another, 1, 2);  // the printer that is set up prints to a file
  files.Expect({});
  Choose(another, 1, 1);
  EXPECT_EQ(files.last.folder, u"/nowhere/Shaft.pdf"_s);
}

}  // namespace
