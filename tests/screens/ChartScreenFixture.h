// A chart screen over a library of one data set of ten points, and what its commands lead to.
#pragma once

#include "core/CreateStatistics.h"
#include "core/DataObjectFunctions.h"
#include "screens/Indicators.h"
#include "screens/PageView.h"
#include "screens/StatGraphics.h"
#include "tests/support/RecordedFileDialogs.h"
#include "tests/support/Walk.h"

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

class ChartScreenFixture : public Walk {
 protected:
  ChartScreenFixture() : Walk(u"StatData"_s, [this](Protocol::States& states) { TellPage(states); }) {
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
    protocol.Begin(u"Open"_s, screen.get());
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
  QWidget& Form() const override { return *screen; }
  void Close(Answers answers = {}) { PressOn(*screen, Qt::Key_Escape, answers); }
  void Press(const QKeyCombination& key) { PressOn(*view, key); }
  void ClickAt(const QString& what, QPoint place) {
    Step(what, [&] { QTest::mouseClick(view, Qt::LeftButton, {}, place); });
  }
  const QLabel& Info() const { return Get<QLabel>(*view, "lblPointInfo"); }
  QPoint PlaceOf(GraphId graph, int number) const {
    return view->Page()->Point(graph, number, view->rect())->position.toPoint();
  }
  // The entry asks for a file, and gets it.
  QByteArray FileBy(const char* entry, const QString& path) {
    files.Expect(path);
    Trigger(entry);
    return ReadFile(path);
  }
  const ChartPage& Page() const { return view->Page()->Page(); }
  QPoint CentreOf(GraphId graph) const {
    return Page().Geometry(int(graph), view->rect()).frame.center().toPoint();
  }

  void TellPage(Protocol::States& states) const {
    states[u"asked for"_s] = u"%1 recalculations, %2 additions, editor at %3, help %4"_s.arg(recalculations)
                                 .arg(additions)
                                 .arg(edited.value(edited.size() - 1))
                                 .arg(helpTopics.value(helpTopics.size() - 1, -1));
    if (offered) states[u"asked for points"_s] = u"%1 to %2"_s.arg(offered->first).arg(offered->last);
    for (const CDataPtr& held : program.state.gDataCollection)
      states[u"held UCL of %1"_s.arg(held->ID())] = QString::number(held->XBarUCL());
    for (const Trace::Note& note : program.state.gLibrary->TraceOf(*data).notes)
      states[u"note on sample %1"_s.arg(note.sample)] = note.text;
    if (!view || !view->Page() || !screen->isVisible()) return;
    const auto [first, last] = view->Page()->ShownPoints();
    states[u"page"_s] = u"points %1 to %2, selected %3, alone %4"_s.arg(first)
                            .arg(last)
                            .arg(int(view->Page()->Selected()))
                            .arg(Page().BlownUpGraph());
    states[u"scale"_s] = QString::number(Page().Graph(0).Scale().top());
    if (last > 0) states[u"drawn UCL"_s] = QString::number(DrawnLimit());
    states[u"lamp"_s] = QString::number(int(Get<Led>(*screen, "orvLEDControl1").ColorValue()));
    states[u"state"_s] =
        QString::number(Get<ProcessStateIndicator>(*screen, "ProcessStateIndicator1").Value());
  }

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
