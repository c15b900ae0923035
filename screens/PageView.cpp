#include "screens/PageView.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QMetaMethod>
#include <QPaintEvent>
#include <QPainter>
#include <QStyleOption>
#include <QToolTip>
#include <algorithm>
#include <map>

#include "platform/chart/Palette.h"
#include "platform/language/Conversions.h"
#include "screens/Controls.h"
#include "texts/ChartWords.h"
#include "texts/DetectionRules.h"
#include "texts/NoteWords.h"

using namespace Qt::StringLiterals;

// A user with large fonts gets large letters, as far as the page has room for them.
double SmallestText(const QWidget& view, double widestPart) {
  constexpr double least = 9, ofFont = 0.64, ofPage = 1.0 / 32, ofWidth = 7.0 / 6;
  return std::max(least,
                  std::min(view.fontMetrics().height() * ofFont,
                           std::min(view.height() * 1.0, view.width() * widestPart * ofWidth) * ofPage));
}

PageView::PageView(QWidget* parent) : QWidget(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMinimumSize(320, 180);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  setAccessibleName(Words::Chart::controlCharts());
  setAccessibleDescription(Words::Chart::keys());

  lblPointInfo = Named(new QLabel(this), u"lblPointInfo"_s);
  lblPointInfo->setAttribute(Qt::WA_TransparentForMouseEvents);
  lblPointInfo->setTextFormat(Qt::PlainText);
  lblPointInfo->setWordWrap(true);
  lblPointInfo->setFrameShape(QFrame::Box);
  lblPointInfo->setMargin(fontMetrics().height() / 3);
  lblPointInfo->setPalette(QToolTip::palette());
  lblPointInfo->setBackgroundRole(QPalette::ToolTipBase);
  lblPointInfo->setForegroundRole(QPalette::ToolTipText);
  lblPointInfo->setAutoFillBackground(true);
  lblPointInfo->hide();
}

QSize PageView::sizeHint() const { return {960, 640}; }

void PageView::SetPage(std::unique_ptr<StatPage> page) {
  if (page && page_) {
    page->Select(page_->Selected());
    if (page_->IsBlownUp()) page->Blowup(page_->Selected());
  }
  page_ = std::move(page);
  const auto explained = point_;
  Redraw();
  if (page_ && explained) Explain(page_->Point(explained->graph, explained->number, rect()));
}

void PageView::Redraw() {
  if (page_) page_->SetSmallestText(SmallestText(*this));
  Explain(std::nullopt);
  picture_ = QPixmap();
  update();
}

bool PageView::ShowPoint(GraphId graph, int number) {
  const auto point = page_ ? page_->Point(graph, number, rect()) : std::nullopt;
  if (!point) return false;
  Select(graph);
  if (IsZoomed() && page_->Page().BlownUpGraph() != static_cast<int>(graph)) {
    page_->Blowup(graph);
    Redraw();
  }
  Explain(page_->Point(graph, number, rect()));
  return true;
}

void PageView::SetStretch(const std::optional<PointRange>& stretch) {
  stretch_ = stretch;
  update();
}

void PageView::Select(GraphId graph) {
  if (!page_ || page_->Selected() == graph) return;
  page_->Select(graph);
  Redraw();
}

bool PageView::ToggleZoom() {
  if (!page_) return false;
  if (page_->IsBlownUp()) {
    page_->Restore();
  } else if (page_->Selected() != GraphId::None) {
    page_->Blowup(page_->Selected());
  } else {
    return false;
  }
  Redraw();
  return true;
}

QString PageView::Explanation(const StatPage::PointInfo& point) const {
  QString text = (point.graph == GraphId::XBar ? Words::Chart::average : Words::Chart::range)(
      point.number, Conversions::CStr(point.value));
  text += u'\n' + Words::Chart::samples(page_->SamplesOf(point).join(u"  "_s));
  if (const QString taken = TakenText(page_->Trace(), point.number); !taken.isEmpty()) text += u'\n' + taken;
  for (const LetteredNote& note : page_->NotesOn(point.number)) {
    constexpr qsizetype mostLetters = 300;
    QString words = note.note->text.simplified();
    if (words.size() > mostLetters) words = words.first(mostLetters) + u'\u2026';
    text += u'\n' + Words::Note::hover(note.letter, NotedText(*note.note), words);
  }
  if (point.isRangeOutside) text += u'\n' + Words::Chart::rangeOutside();
  for (const int rule : point.rules) {
    text += u'\n' + GlobalFunctions::RuleViolationText(static_cast<qint16>(rule)).trimmed();
  }
  return text;
}

void PageView::Explain(const std::optional<StatPage::PointInfo>& point) {
  const auto key = [](const auto& of) {
    return of ? std::pair(of->graph, of->number) : std::pair(GraphId::None, 0);
  };
  if (key(point) == key(point_)) return;
  if (point_) update(RingAround(*point_));
  point_ = point;
  lblPointInfo->setVisible(point_.has_value());
  if (!point_) return;
  update(RingAround(*point_));
  lblPointInfo->setText(Explanation(*point_));
  PlaceExplanation();
}

void PageView::PlaceExplanation() {
  const int em = fontMetrics().height();
  const int rim = 2 * (lblPointInfo->margin() + lblPointInfo->frameWidth());
  const int oneLine = fontMetrics().size(0, lblPointInfo->text()).width() + rim + 2;
  const int wide = std::min({oneLine, em * 26, width() - em});
  const QSize size(wide, lblPointInfo->heightForWidth(wide));
  // Below the point, or above it where that has more room, so that it never lies on the point itself.
  const QPoint at = point_->position.toPoint();
  const int x = std::clamp(at.x() + em, 0, std::max(0, width() - size.width()));
  const bool below = at.y() + em + size.height() <= height() || at.y() < height() / 2;
  const int y = below ? at.y() + em : at.y() - em - size.height();
  lblPointInfo->setGeometry(QRect(QPoint(x, y), size));
}

QRect PageView::RingAround(const StatPage::PointInfo& point) const {
  const int radius = fontMetrics().height() / 2;
  return QRect(point.position.toPoint() - QPoint(radius, radius), QSize(2 * radius, 2 * radius));
}

void PageView::paintEvent(QPaintEvent* event) {
  if (picture_.isNull()) {
    const qreal scale = devicePixelRatioF();
    picture_ = QPixmap(size() * scale);
    picture_.setDevicePixelRatio(scale);
    picture_.fill(Qt::white);
    QPainter painter(&picture_);
    if (page_) page_->Paint(painter, rect());
  }
  QPainter painter(this);
  painter.setClipRegion(event->region());
  painter.drawPixmap(0, 0, picture_);
  PaintStretch(painter);
  // A selected graph shows by its frame where the keys go; without one the whole page does.
  const bool byKeys = window()->testAttribute(Qt::WA_KeyboardFocusChange);
  if (hasFocus() && byKeys && page_ && page_->Selected() == GraphId::None) {
    QStyleOptionFocusRect focus;
    focus.initFrom(this);
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
  }
  if (!point_) return;
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(Palette::Colour(Palette::Black), 2));
  painter.drawEllipse(QRectF(RingAround(*point_)).adjusted(2, 2, -2, -2));
}

void PageView::PaintStretch(QPainter& painter) const {
  if (!page_ || !stretch_) return;
  QColor ground = Palette::Colour(Palette::Blue);
  ground.setAlpha(36);
  for (const GraphId graph : {GraphId::XBar, GraphId::R}) {
    if (const QRectF area = page_->GroundOf(graph, *stretch_, rect()); !area.isEmpty())
      painter.fillRect(area, ground);
  }
}

void PageView::resizeEvent(QResizeEvent*) {
  const auto explained = point_;
  Redraw();
  if (explained) Explain(page_->Point(explained->graph, explained->number, rect()));
}

void PageView::mousePressEvent(QMouseEvent* event) {
  if (!page_ || event->button() != Qt::LeftButton) return;
  const GraphId graph = page_->GraphAt(event->position(), rect());
  if (graph == GraphId::None) return;
  Select(graph);
  const int number = page_->NumberAt(graph, event->position(), rect());
  if (number > 0) press_ = Press{graph, event->position(), number, false};
}

// A click without a drag takes a stretch back.
void PageView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !press_) return;
  const bool isDrag = press_->isDrag;
  press_.reset();
  if (!isDrag && !stretch_) return;
  if (!isDrag) SetStretch(std::nullopt);
  Q_EMIT StretchSelected();
}

bool PageView::Drag(QPointF position) {
  if (!press_) return false;
  const double moved = std::abs(position.x() - press_->position.x());
  press_->isDrag = press_->isDrag || moved >= QApplication::startDragDistance();
  if (!press_->isDrag) return false;
  const auto [first, last] = std::minmax({press_->number, page_->NumberAt(press_->graph, position, rect())});
  SetStretch(PointRange{first, last});
  return true;
}

void PageView::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !page_) return;
  if (const auto point = page_->PointAt(event->position(), rect()))
    Q_EMIT PointActivated(point->number);
  else
    Q_EMIT ZoomRequested();
}

void PageView::mouseMoveEvent(QMouseEvent* event) {
  if (page_ && !Drag(event->position())) Explain(page_->PointAt(event->position(), rect()));
}

// A menu over it is about the point that is explained.
void PageView::leaveEvent(QEvent*) {
  if (!QApplication::activePopupWidget()) Explain(std::nullopt);
}

bool PageView::MoveSelection(int key) {
  if (key != Qt::Key_Left && key != Qt::Key_Right && key != Qt::Key_Up && key != Qt::Key_Down) return false;
  if (IsZoomed()) return true;
  if (page_->Selected() == GraphId::None) {
    Select(GraphId::XBar);
    return true;
  }
  // The graphs are numbered down the left column, then down the right one.
  const int selected = static_cast<int>(page_->Selected());
  const int column = key == Qt::Key_Left ? 0 : key == Qt::Key_Right ? 1 : selected / 2;
  const int row = key == Qt::Key_Up ? 0 : key == Qt::Key_Down ? 1 : selected % 2;
  Select(static_cast<GraphId>(column * 2 + row));
  return true;
}

bool PageView::MovePoint(int key, bool selects) {
  static const QList<int> keys{Qt::Key_Home, Qt::Key_End, Qt::Key_PageUp, Qt::Key_PageDown};
  if (!keys.contains(key)) return false;
  if (page_->Selected() == GraphId::None && !IsZoomed()) Select(GraphId::XBar);
  const GraphId graph = page_->Selected();
  const int current = point_ && point_->graph == graph ? point_->number : 0;
  const auto [first, last] = page_->ShownPoints();
  const std::map<int, int> targets{{Qt::Key_Home, first},
                                   {Qt::Key_End, last},
                                   {Qt::Key_PageUp, std::max(current - 1, first)},
                                   {Qt::Key_PageDown, std::clamp(current + 1, first, last)}};
  // A point without a value is stepped over.
  const int step = key == Qt::Key_Home || key == Qt::Key_PageDown ? 1 : -1;
  for (int number = targets.at(key); number >= first && number <= last; number += step) {
    const auto point = page_->Point(graph, number, rect());
    if (!point) continue;
    Explain(point);
    SelectTo(number, selects ? current : 0);
    break;
  }
  return true;
}

void PageView::SelectTo(int number, int before) {
  if (before == 0) {
    anchor_ = 0;
    return;
  }
  if (anchor_ == 0) anchor_ = before;
  const auto [first, last] = std::minmax({anchor_, number});
  SetStretch(PointRange{first, last});
  Q_EMIT StretchSelected();
}

void PageView::keyPressEvent(QKeyEvent* event) {
  const int key = event->key();
  const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space;
  if (page_ && (MoveSelection(key) || MovePoint(key, event->modifiers().testFlag(Qt::ShiftModifier)))) return;
  const bool zooms = isSignalConnected(QMetaMethod::fromSignal(&PageView::ZoomRequested));
  if (zooms && (enter || (key == Qt::Key_Plus && !IsZoomed()) || (key == Qt::Key_Minus && IsZoomed()))) {
    Q_EMIT ZoomRequested();
  } else {
    QWidget::keyPressEvent(event);
  }
}
