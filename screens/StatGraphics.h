// The chart screen: one data set's page of charts with its verdict, and the commands on them.
#pragma once

#include <QDialog>
#include <functional>
#include <optional>

#include "charts/StatPage.h"
#include "data/CData.h"
#include "screens/LibraryView.h"
#include "screens/PagePrinting.h"

class ButtonBar;
class PageView;
class PointsBar;
class QCheckBox;
class QComboBox;
class QFrame;
class QLabel;
class QPushButton;
class QToolButton;
class VerdictPanel;

class StatGraphics : public QDialog, public LibraryView {
  Q_OBJECT
 public:
  // The ways to what lies outside of this screen.
  struct Links {
    // Modal; calculates new limits for `data` and tells by gLimitsRecalculated whether it did. The stretch of
    // points, where there is one, is what the user has chosen for it.
    std::function<void(QWidget* parent, const CDataPtr& data, std::optional<PointRange> stretch)>
        openRecalcScreen;
    std::function<void(QWidget* parent)> openAddMeasurements;     // modal
    std::function<void(QWidget* parent, int sample)> openEditor;  // modal; of the current data set
    std::function<void(qint32 topic)> callUpHelp;
    qint32 helpTopic = 0;  // of this screen
  };

  // Loads the current data set. The printing outlives the screen.
  StatGraphics(Links links, PagePrinting& printing, QWidget* parent = nullptr);

  void LibraryChanged() override;
  int exec() override;  // rejected at once where loading refused the data set

 public Q_SLOTS:
  void reject() override;  // every way of closing; the user may keep the screen open

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  enum ToolbarButton { Print = 1, SaveChanges, Zoom, Recalc, Utilities, Help, Close };

  // What the screen looks like (StatGraphicsLayout.cpp).
  void BuildControls();
  ButtonBar* BuildToolbar();
  QLayout* BuildHead();
  QToolButton* BuildNeighbour(const QString& name, int step);
  QWidget* BuildScaleNotice();
  void ConnectControls();
  void ConnectPoints();

  void Form_Load();
  bool LoadDataSet();
  void Show(const CData& dataSet);
  bool TakeFromCollection();  // false where it is gone
  void ShowNews(const QString& news);
  void TellFile(const QString& path);  // that a page was written to; none where it is empty
  void ButtonClick(int button);
  void ButtonMenuClick(int button, int entry);

  std::unique_ptr<StatPage> MakePage(StatPageOptions options) const;
  std::unique_ptr<StatPage> PageForOutput() const;
  bool StartStatGraphics();
  void ShowScaleNotice();
  void UpdateStatGraphicsText();
  void ShowAnew();
  void FitScale(bool fitted);
  void ZoomOnSelectedGraph();
  void ExportQCReport();
  void PrintPage();
  void Recalculate();
  void AddMeasurements();
  void EditPoint(int number);
  void ChangeBelow(const std::function<void()>& change);
  bool Save();
  bool Form_Unload();

  // Points and marks (StatGraphicsPoints.cpp).
  void OfferStretch();
  void ShowPoints(std::optional<PointRange> points);
  void ShowMonth(int months);  // that of today, or so many months later
  void ShowMark(GraphId graph, int number);
  void StepMark(int step);
  PointTrace Traced() const;
  bool TakeTrace();  // from the library; false where nothing of it has changed
  void LabelAxis(int labels);
  void NotePoint();  // the one that is explained
  void ListUnplaced();
  void ShowTraceAnew(const std::optional<StatPage::PointInfo>& point);

  // The next data set that can be drawn, that many steps away in the list; null where there is none.
  CDataPtr Neighbour(int step, QStringList* skipped = nullptr) const;
  void ShowNeighbour(int step);

  Links links_;
  PagePrinting& printing_;
  CDataPtr data_;  // a copy: new limits are nobody else's before they are saved
  bool dataChanged_ = false;
  bool isRecalculating_ = false;
  bool isThere_ = true;  // the data set, in the library
  bool loaded_ = false;
  std::optional<PointRange> points_;  // that the charts show, where that is a part
  std::optional<Period> period_;      // that they were taken in, where that tells which
  std::shared_ptr<const Trace::Record> trace_;

  ButtonBar* Toolbar1 = nullptr;
  PageView* view_ = nullptr;
  QToolButton* cmdPrevious = nullptr;
  QToolButton* cmdNext = nullptr;
  QLabel* lblDescription = nullptr;
  QLabel* lblNews = nullptr;
  QComboBox* cboAxis = nullptr;
  QCheckBox* checkFitScale = nullptr;
  QFrame* scaleNotice_ = nullptr;
  QLabel* lblScale = nullptr;
  QPushButton* cmdFitScale = nullptr;
  PointsBar* pointsBar_ = nullptr;
  VerdictPanel* verdict_ = nullptr;
};
