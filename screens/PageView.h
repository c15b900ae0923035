// The widget that shows a page of charts: the selected graph, the zoomed one, and what a point says.
#pragma once

#include <QPixmap>
#include <QWidget>
#include <memory>

#include "charts/StatPage.h"

class QLabel;

// A click selects a graph; a double-click and the keys Enter, Space and "+" ask for the zoom, "-" for its
// end. The arrow keys move the selection, Page Up, Page Down, Home and End the point that is explained on the
// selected chart.
class PageView : public QWidget {
  Q_OBJECT
 public:
  explicit PageView(QWidget* parent = nullptr);

  // Shows another page, or none. What was selected and zoomed on the one before is so on this one.
  void SetPage(std::unique_ptr<StatPage> page);
  const StatPage* Page() const { return page_.get(); }

  void Select(GraphId graph);
  // Zooms the selected graph, or restores the page; false where nothing is selected to be zoomed.
  bool ToggleZoom();
  bool IsZoomed() const { return page_ && page_->IsBlownUp(); }

  // What is said about a point: its number, its value and the rules that it breaks, in their own words.
  static QString Explanation(const StatPage::PointInfo& point);

  QSize sizeHint() const override;

 Q_SIGNALS:
  void ZoomRequested();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Redraw();
  void Explain(const std::optional<StatPage::PointInfo>& point);
  void PlaceExplanation();
  QRect RingAround(const StatPage::PointInfo& point) const;
  bool MoveSelection(int key);
  bool MovePoint(int key);

  std::unique_ptr<StatPage> page_;
  QPixmap picture_;  // of the page, at the widget's size and scale; null: to be painted anew
  std::optional<StatPage::PointInfo> point_;
  QLabel* lblPointInfo = nullptr;
};
