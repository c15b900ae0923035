// The chart screen: one data set's page of charts with its verdict, and the commands on them.
#pragma once

#include <QDialog>
#include <functional>

#include "charts/StatPage.h"
#include "data/CData.h"
#include "screens/LibraryView.h"
#include "screens/PagePrinting.h"

class ButtonBar;
class Led;
class PageView;
class ProcessStateIndicator;
class QCheckBox;
class QLabel;
class StatSummary;

class StatGraphics : public QDialog, public LibraryView {
  Q_OBJECT
 public:
  // The ways to what lies outside of this screen.
  struct Links {
    // Modal; calculates new limits for `data` and tells by gLimitsRecalculated whether it did.
    std::function<void(QWidget* parent, const CDataPtr& data)> openRecalcScreen;
    std::function<void(QWidget* parent)> openAddMeasurements;  // modal
    std::function<void(qint32 topic)> callUpHelp;
    qint32 helpTopic = 0;  // of this screen
  };

  // Loads the current data set. The printing outlives the screen.
  StatGraphics(Links links, PagePrinting& printing, QWidget* parent = nullptr);

  void LibraryChanged() override;
  int exec() override;  // rejected at once where loading refused the data set

 public Q_SLOTS:
  void reject() override;  // every way of closing; the user may keep the screen open

 private:
  void Form_Load();
  bool LoadDataSet();
  void Show(const CData& dataSet);
  void TakeFromCollection();
  void ShowNews(const QString& news);
  void BuildControls();
  ButtonBar* BuildToolbar();
  QWidget* BuildVerdict();
  QWidget* BuildRuleViolation();
  void ConnectControls();
  void ButtonClick(int button);
  void ButtonMenuClick(int button, int entry);

  std::unique_ptr<StatPage> MakePage(StatPageOptions options) const;
  bool StartStatGraphics();
  void UpdateStatGraphicsText();
  void ShowAnew();
  void FitScale(bool fitted);
  void ZoomOnSelectedGraph();
  void ExportQCReport();
  void PrintPage();
  void Recalculate();
  void AddMeasurements();
  bool Save();
  bool Form_Unload();

  Links links_;
  PagePrinting& printing_;
  CDataPtr data_;  // a copy: new limits are nobody else's before they are saved
  bool dataChanged_ = false;
  bool isRecalculating_ = false;
  bool loaded_ = false;

  ButtonBar* Toolbar1 = nullptr;
  PageView* view_ = nullptr;
  QLabel* lblDescription = nullptr;
  QLabel* lblNews = nullptr;
  QCheckBox* checkFitScale = nullptr;
  ProcessStateIndicator* ProcessStateIndicator1 = nullptr;
  Led* orvLEDControl1 = nullptr;
  QLabel* panelRuleViolationValue = nullptr;
  QLabel* panelMessage = nullptr;
  StatSummary* StatSummary1 = nullptr;
};
