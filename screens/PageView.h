// The widget that shows a page of charts: the selected graph, the zoomed one, what a point says, and a
// stretch of points that the mouse is dragged over.
#pragma once

#include <QPixmap>
#include <QWidget>
#include <memory>

#include "charts/StatPage.h"

class QLabel;

// The smallest letters of a page in that window, in its pixels. widestPart: the share of its width that one
// chart has.
double SmallestText(const QWidget& view, double widestPart = 0.6);

// A click selects a graph; a double-click off the points and the keys Enter, Space and "+" ask for the zoom,
// "-" for its end. The arrow keys move the selection, Page Up, Page Down, Home and End the point that is
// explained on the selected chart; with Shift they select the stretch that they pass.
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

  // Explains that point, on its graph; false where the page does not show it.
  bool ShowPoint(GraphId graph, int number);
  const std::optional<StatPage::PointInfo>& ShownPoint() const { return point_; }

  const std::optional<PointRange>& Stretch() const { return stretch_; }
  void SetStretch(const std::optional<PointRange>& stretch);

  QSize sizeHint() const override;

 Q_SIGNALS:
  void ZoomRequested();
  void PointActivated(int number);  // by a double-click
  void StretchSelected();           // by mouse or keys; Stretch() tells which, if any

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Redraw();
  void Explain(const std::optional<StatPage::PointInfo>& point);
  // Its number, its value, its samples, and the rules that it breaks, in their own words.
  QString Explanation(const StatPage::PointInfo& point) const;
  void PlaceExplanation();
  QRect RingAround(const StatPage::PointInfo& point) const;
  bool MoveSelection(int key);
  bool MovePoint(int key, bool selects);
  void SelectTo(int number, int before);  // from the point before it; 0 ends selecting
  bool Drag(QPointF position);
  void PaintStretch(QPainter& painter) const;

  std::unique_ptr<StatPage> page_;
  QPixmap picture_;  // of the page, at the widget's size and scale; null: to be painted anew
  std::optional<StatPage::PointInfo> point_;
  std::optional<PointRange> stretch_;
  int anchor_ = 0;  // the point that a stretch is selected from by keys; 0 for none
  struct Press {
    GraphId graph;
    QPointF position;
    int number;  // of the point there
    bool isDrag;
  };
  std::optional<Press> press_;  // of the left button, while it is down on a chart
  QLabel* lblPointInfo = nullptr;
};
