// A chart screen over a library of one data set of ten points, and what its commands lead to.
#pragma once

#include "core/CreateStatistics.h"
#include "core/DataObjectFunctions.h"
#include "screens/PageView.h"
#include "screens/StatGraphics.h"
#include "tests/support/RecordedFileDialogs.h"
#include "tests/support/TestProgram.h"
#include "tests/support/Widgets.h"

// Printers that stand for their paper.
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
  QString Rejection() override { return rejection; }
  QString rejection;
  QPrinter* printer = nullptr;
  QString paper;
};

class ChartScreenFixture : public testing::Test {
 protected:
  ChartScreenFixture() {
    program.state.gCurrentDataID = program.Insert(u"Shaft"_s);
    EXPECT_TRUE(DataObjectFunctions::InitializeCDataCollection());
    data = program.state.gDataCollection.at(0);  // ten points
  }

  void Open() {
    screen = std::make_unique<StatGraphics>(
        StatGraphics::Links{[this](QWidget*, const CDataPtr& copy, std::optional<PointRange> stretch) {
                              offered = stretch;
                              Recalculate(*copy);
                            },
                            [this](QWidget*) { AddAPoint(); },
                            [this](QWidget*, int sample) {
                              edited << sample;
                              AddAPoint();
                            },
                            [this](qint32 topic) { helpTopics << topic; }, 23},
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
  const QLabel& Info() const { return Get<QLabel>(*view, "lblPointInfo"); }
  QPoint PlaceOf(GraphId graph, int number) const {
    return view->Page()->Point(graph, number, view->rect())->position.toPoint();
  }
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
  QList<int> edited;  // samples that the editor was opened at
  std::optional<PointRange> offered;
  int additions = 0;
  int recalculations = 0;
  qint16 lastPoint = 6;
  std::function<void()> whileRecalculating;
  std::unique_ptr<StatGraphics> screen;
  PageView* view = nullptr;
};
