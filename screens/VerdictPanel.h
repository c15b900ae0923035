// The panel beside the charts: the state of the process, the broken rule, the marks, what the limits rest on,
// and the summary.
#pragma once

#include <QScrollArea>

#include "charts/StatPage.h"
#include "data/CData.h"

class Led;
class MarkList;
class ProcessStateIndicator;
class QLabel;
class QPushButton;
class QVBoxLayout;
class StatSummary;

class VerdictPanel : public QScrollArea {
  Q_OBJECT
 public:
  explicit VerdictPanel(QWidget* parent = nullptr);

  void Show(const CData& dataSet, const StatPage& page);

  void SetColumn(int width);  // of what stands in it

  MarkList& Marks() const { return *marks_; }

 Q_SIGNALS:
  void StepRequested(int step);  // to the next mark (1) or the one before (-1)

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  QWidget* BuildRuleViolation();
  QWidget* BuildMarks();

  ProcessStateIndicator* ProcessStateIndicator1 = nullptr;
  Led* orvLEDControl1 = nullptr;
  QLabel* panelRuleViolationValue = nullptr;
  QLabel* panelMessage = nullptr;
  QWidget* marksBox_ = nullptr;
  MarkList* marks_ = nullptr;
  QLabel* lblLimits = nullptr;
  StatSummary* StatSummary1 = nullptr;
};
