#include "screens/MainList.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QSignalBlocker>
#include <algorithm>
#include <unordered_set>
#include <utility>
#include <vector>

#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int figures[] = {MainListModel::Cpk, MainListModel::Samples, MainListModel::LastModified};
}

MainList::MainList(QWidget* parent) : QTreeView(parent), rows_(new MainListModel(this)) {
  setModel(rows_);
  setRootIsDecorated(false);
  setItemsExpandable(false);
  setUniformRowHeights(true);  // so that a row costs the same in a list of thousands
  setAllColumnsShowFocus(true);
  setSelectionMode(ExtendedSelection);
  setTabKeyNavigation(false);
  setVerticalScrollMode(ScrollPerPixel);
  setHorizontalScrollMode(ScrollPerPixel);
  setIconSize(QSize(fontMetrics().height(), fontMetrics().height()));
  setFrameStyle(Box | Plain);  // whose colour tells where the keys go
  setLineWidth(2);
  SetupListColumns();
  connect(this, &MainList::Arranged, this, &MainList::Describe);
  connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, &MainList::SelectedOthers);
}

// Columns

void MainList::SetupListColumns() {
  QHeaderView& columns = *header();
  columns.setSectionsMovable(false);
  columns.setStretchLastSection(false);
  columns.setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  columns.setSectionResizeMode(MainListModel::State, QHeaderView::Fixed);
  columns.setSectionsClickable(true);
  columns.setSortIndicatorShown(true);
  columns.setSortIndicatorClearable(true);  // the third click gives the library's order back
  columns.setSortIndicator(-1, Qt::AscendingOrder);
  const int margin = fontMetrics().height() * 3 / 2;
  for (const int figure : figures) {
    const QString caption = rows_->headerData(figure, Qt::Horizontal, Qt::DisplayRole).toString();
    const QString widest = figure == MainListModel::LastModified ? u"0000-00-00 00:00:00"_s : QString();
    columns.resizeSection(figure, margin + std::max(fontMetrics().horizontalAdvance(caption),
                                                    fontMetrics().horizontalAdvance(widest)));
  }
  columns.hideSection(MainListModel::ID);
  connect(&columns, &QHeaderView::sectionResized, this,
          [this](int column, int, int width) { ColumnResized(column, width); });
  connect(&columns, &QHeaderView::sortIndicatorChanged, this, &MainList::Sort);
}

void MainList::Sort(int column, Qt::SortOrder direction) {
  const bool wasFirst = currentIndex().row() <= 0;
  KeepPlace([&] {
    rows_->SortBy(column, direction);
    rows_->Arrange(CurrentID());
  });
  scrollToTop();
  if (!wasFirst) scrollTo(currentIndex());  // what was looked for stays in sight
}

void MainList::SizeColumns() {
  const QScopedValueRollback sizing(isSizing_, true);
  const int width = viewport()->width();
  const int state = std::max(width * 4 / 100, iconSize().width() * 2);
  int rest = width - state;
  for (const int figure : figures) rest -= columnWidth(figure);
  setColumnWidth(MainListModel::State, state);
  const int least = std::min(fontMetrics().height() * 12, width - state);  // what is longer ends in dots
  setColumnWidth(MainListModel::Description, chosenWidth_ > 0 ? chosenWidth_ : std::max(rest, least));
}

void MainList::ColumnResized(int column, int width) {
  if (isSizing_) return;
  if (column == MainListModel::Description)
    chosenWidth_ = width;
  else
    SizeColumns();
}

QString MainList::ColumnWidths() const {
  QStringList widths{QString::number(chosenWidth_)};
  for (const int figure : figures) widths << QString::number(columnWidth(figure));
  return widths.join(u' ');
}

void MainList::SetColumnWidths(const QString& widths) {
  const QStringList list = widths.split(u' ');
  if (list.size() != 1 + std::ssize(figures)) return;
  chosenWidth_ = std::clamp(list[0].toInt(), 0, 10'000);
  for (qsizetype i = 0; i < std::ssize(figures); ++i)
    if (const int width = list[i + 1].toInt(); width > 0) setColumnWidth(figures[i], std::min(width, 10'000));
  SizeColumns();
}

// Rows

void MainList::Clear() {
  const QSignalBlocker quiet(this);
  rows_->Clear();
  lastCurrent_ = 0;
}

void MainList::AddRows(std::span<const CDataPtr> dataSets) {
  rows_->Append(dataSets);
  if (!rows_->IsPlain()) return KeepPlace([this] { rows_->Arrange(CurrentID()); });
  rows_->ShowAppended();
  if (!HasCurrent()) MakeCurrent(0);
  Q_EMIT Arranged();
}

void MainList::Change(const std::function<void(MainListModel&)>& change) {
  KeepPlace([&] {
    const qint32 current = CurrentID();
    change(*rows_);
    rows_->Arrange(current);
  });
}

void MainList::KeepPlace(const std::function<void()>& rearrange) {
  const int row = currentIndex().row();
  const qint32 current = CurrentID();
  const std::vector<qint32> selected = IsCurrentAloneSelected() ? std::vector<qint32>() : Selected();
  std::vector<std::pair<qint32, int>> inView;  // IDs and where they are
  for (QModelIndex index = indexAt({0, 0}); index.isValid(); index = indexBelow(index)) {
    const int top = visualRect(index).top();
    if (top > viewport()->height()) break;
    inView.emplace_back(rows_->IDAt(index.row()), top);
  }
  rearrange();
  const int found = rows_->RowWith(current);
  MakeCurrent(found >= 0 ? found : std::clamp(row, 0, std::max(0, rows_->rowCount() - 1)));
  SelectAlso(selected);
  for (const auto& [id, top] : inView) {
    const QModelIndex index = rows_->index(rows_->RowWith(id), MainListModel::Description);
    if (!index.isValid()) continue;
    verticalScrollBar()->setValue(verticalScrollBar()->value() + visualRect(index).top() - top);
    break;
  }
  Q_EMIT Arranged();
}

void MainList::MakeCurrent(int row) {
  const QSignalBlocker quiet(this);
  setCurrentIndex(rows_->index(row, MainListModel::Description));
}

void MainList::scrollTo(const QModelIndex& index, ScrollHint hint) {
  const int scrolled = horizontalScrollBar()->value();
  QTreeView::scrollTo(index, hint);
  horizontalScrollBar()->setValue(scrolled);
}

std::vector<qint32> MainList::Selected() const {
  std::vector<int> rows;
  for (const QModelIndex& index : selectionModel()->selectedRows()) rows.push_back(index.row());
  std::ranges::sort(rows);
  std::vector<qint32> ids;
  for (const int row : rows) ids.push_back(rows_->IDAt(row));
  return ids;
}

bool MainList::IsCurrentAloneSelected() const {
  const QModelIndexList rows = selectionModel()->selectedRows();
  return rows.size() == 1 && rows.first().row() == currentIndex().row();
}

void MainList::SelectAlso(const std::vector<qint32>& ids) {
  const QSignalBlocker quiet(this);
  const std::unordered_set<qint32> wanted(ids.begin(), ids.end());
  QItemSelection selection;
  for (int row = 0; !wanted.empty() && row < rows_->rowCount(); ++row)
    if (wanted.contains(rows_->IDAt(row))) selection.append(QItemSelectionRange(rows_->index(row, 0)));
  selectionModel()->select(selection, QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

bool MainList::Select(qint32 id) {
  if (rows_->RowWith(id) < 0) KeepPlace([&] { rows_->Arrange(id); });
  const int row = rows_->RowWith(id);
  if (row < 0) return false;
  MakeCurrent(row);
  scrollTo(currentIndex());  // it may have been the current one, out of sight
  return true;
}

QString MainList::CurrentDescription() const {
  return currentIndex().siblingAtColumn(MainListModel::Description).data().toString();
}

void MainList::SetFilter(const MainListModel::Filter& filter) {
  const qint32 before = CurrentID();
  rows_->SetFilter(filter);
  rows_->Arrange(0);
  MakeCurrent(std::max(0, rows_->RowWith(lastCurrent_)));
  Q_EMIT Arranged();
  if (CurrentID() != before) Q_EMIT ItemClick(CurrentDescription());
}

void MainList::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTreeView::currentChanged(current, previous);
  if (!current.isValid()) return;
  lastCurrent_ = CurrentID();
  if (current.row() != previous.row()) Q_EMIT ItemClick(CurrentDescription());
  Q_EMIT SelectedOthers();
}

// Keys and mouse

void MainList::keyboardSearch(const QString& search) {
  // The search looks in the column of the current cell.
  if (HasCurrent()) setCurrentIndex(currentIndex().siblingAtColumn(MainListModel::Description));
  QTreeView::keyboardSearch(search);
}

QItemSelectionModel::SelectionFlags MainList::selectionCommand(const QModelIndex& index,
                                                               const QEvent* event) const {
  using enum QItemSelectionModel::SelectionFlag;
  if (!index.isValid()) return NoUpdate;
  if (!event) return ClearAndSelect | Rows;  // whatever keys are down
  const auto command = QTreeView::selectionCommand(index, event);
  const bool leavesNone = command.testFlag(Toggle) && selectionModel()->isSelected(index) &&
                          selectionModel()->selectedRows().size() == 1;
  return leavesNone ? NoUpdate : command;
}

void MainList::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (HasCurrent()) Q_EMIT RowActivated();
      break;
    case Qt::Key_Delete:
      if (HasCurrent()) Q_EMIT DeletePressed();
      break;
    case Qt::Key_Escape:
      Q_EMIT EscapePressed();
      break;
    case Qt::Key_Space:
      if (event->modifiers() == Qt::ControlModifier)  // no letter to search for
        selectionModel()->select(currentIndex(), selectionCommand(currentIndex(), event));
      else
        QTreeView::keyPressEvent(event);
      break;
    case Qt::Key_F10:
      if (event->modifiers() == Qt::ShiftModifier) return RequestMenu();
      [[fallthrough]];
    default:
      QTreeView::keyPressEvent(event);
  }
}

void MainList::mouseMoveEvent(QMouseEvent* event) {
  // A hand that is not quite still selects no more than a click does.
  if (event->buttons() == Qt::NoButton) QTreeView::mouseMoveEvent(event);
}

void MainList::mouseReleaseEvent(QMouseEvent* event) {
  QTreeView::mouseReleaseEvent(event);
  if (event->button() == Qt::RightButton) Q_EMIT MenuRequested(event->globalPosition().toPoint());
}

void MainList::mouseDoubleClickEvent(QMouseEvent* event) {
  QTreeView::mouseDoubleClickEvent(event);
  if (event->button() == Qt::LeftButton && indexAt(event->position().toPoint()).isValid())
    Q_EMIT RowActivated();
}

void MainList::contextMenuEvent(QContextMenuEvent* event) {
  // The mouse opens the menu when its button is released.
  if (event->reason() != QContextMenuEvent::Mouse) RequestMenu();
}

void MainList::RequestMenu() {
  scrollTo(currentIndex());
  const QRect row = visualRect(currentIndex()) & viewport()->rect();
  Q_EMIT MenuRequested(viewport()->mapToGlobal((row.isValid() ? row : viewport()->rect()).center()));
}

void MainList::resizeEvent(QResizeEvent* event) {
  QTreeView::resizeEvent(event);
  SizeColumns();
}

// Where there is nothing to show

void MainList::SetHint(const QString& hint) {
  hint_ = hint;
  Describe();
}

QString MainList::Hint() const {
  if (rows_->rowCount() > 0) return {};
  return rows_->Total() > 0 ? Words::Main::nothingFits() : hint_;
}

void MainList::Describe() {
  setAccessibleDescription(Hint());
  viewport()->update();
}

bool MainList::event(QEvent* event) {
  if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) update();
  if (event->type() != QEvent::Paint) return QTreeView::event(event);
  const auto role = hasFocus() ? QPalette::Highlight : QPalette::Mid;
  QPainter(this).fillRect(rect(), palette().color(role));
  return true;
}

void MainList::paintEvent(QPaintEvent* event) {
  QTreeView::paintEvent(event);
  if (Hint().isEmpty()) return;
  QPainter painter(viewport());
  painter.setPen(palette().color(QPalette::Text));
  const int margin = fontMetrics().height();
  painter.drawText(viewport()->rect().adjusted(margin, margin, -margin, -margin),
                   Qt::AlignCenter | Qt::TextWordWrap, Hint());
}
