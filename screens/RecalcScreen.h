// The recalculate dialog: new control limits for the current data set, from all its points or from a range.
#pragma once

#include <QDialog>
#include <QTimer>
#include <optional>

#include "charts/ControlChart.h"
#include "data/CData.h"
#include "screens/LibraryView.h"

class Mnemonics;
class PageView;
class QLabel;
class QLineEdit;

class RecalcScreen : public QDialog, public LibraryView {
  Q_OBJECT
 public:
  // Works on `dataSet`, which a caller may have made a copy of; without one on the current data set. The
  // boxes start with the stretch of points, where there is one.
  explicit RecalcScreen(QWidget* parent = nullptr, CDataPtr dataSet = nullptr,
                        const std::optional<PointRange>& stretch = std::nullopt);

  int exec() override;  // rejected at once where the data set could not be had

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void BuildControls();
  QWidget* BuildDescription();
  QWidget* BuildDataRange(Mnemonics& mnemonics);
  QLayout* BuildButtons(Mnemonics& mnemonics);
  QLineEdit* MakePointBox(const QString& name);
  void LoadDataSet(const std::optional<PointRange>& stretch);
  QWidget* BuildChart();
  void ShowChart();
  void TakeStretch();
  void ShowRange();
  bool ValidateRange();
  bool Reject(QLineEdit* box, const QString& message);
  void RecalculateRange();
  void RecalculateAll();
  void Recalculate(qint16 start, qint16 stop);

  CDataPtr data_;
  QWidget* chartBox_ = nullptr;
  PageView* view_ = nullptr;
  QLabel* lblDescription = nullptr;
  QLineEdit* txtStartPoint = nullptr;
  QLineEdit* txtStopPoint = nullptr;
  QTimer TextReset{this};
};
