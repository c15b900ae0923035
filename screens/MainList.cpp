#include "screens/MainList.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QPainter>
#include <QScrollBar>
#include <QSignalBlocker>

#include "screens/Indicators.h"
#include "texts/DetectionRules.h"
#include "texts/Texts.h"

namespace {

void ShowState(QTreeWidgetItem* row, int state) {
  row->setIcon(0, ProcessStateIcon(state));
  row->setToolTip(0, ProcessState::Name(state));
  row->setData(0, Qt::AccessibleTextRole, ProcessState::Name(state));
}

}  // namespace

MainList::MainList(QWidget* parent) : QTreeWidget(parent) {
  setRootIsDecorated(false);
  setUniformRowHeights(true);  // so that a row costs the same in a list of thousands
  setAllColumnsShowFocus(true);
  setTabKeyNavigation(false);
  setVerticalScrollMode(ScrollPerPixel);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setIconSize(QSize(fontMetrics().height(), fontMetrics().height()));
  SetupListColumns();
  connect(this, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* row) {
    if (row) Q_EMIT ItemClick(row->text(Description));
  });
}

void MainList::SetupListColumns() {
  setColumnCount(ColumnCount);
  setHeaderLabels({{}, LoadResText(u"Data Description;186"), {}});
  hideColumn(ID);
  header()->setSectionsMovable(false);
  header()->setSectionsClickable(false);
  header()->setSectionResizeMode(QHeaderView::Fixed);
  header()->setStretchLastSection(false);
  header()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void MainList::SizeColumns() {
  const int width = viewport()->width();
  const int icon = std::max(width * 4 / 100, iconSize().width() * 2);
  setColumnWidth(Icon, icon);
  setColumnWidth(Description, width - icon);
}

void MainList::AddRow(const CData& dataSet) { addTopLevelItem(MakeRow(dataSet)); }

void MainList::InsertRow(int row, const CData& dataSet) {
  insertTopLevelItem(std::min(row, topLevelItemCount()), MakeRow(dataSet));
}

void MainList::AddRows(std::span<const CDataPtr> dataSets) {
  QList<QTreeWidgetItem*> rows;
  for (const CDataPtr& dataSet : dataSets) rows << MakeRow(*dataSet);
  addTopLevelItems(rows);
}

QTreeWidgetItem* MainList::MakeRow(const CData& dataSet) {
  auto* row = new QTreeWidgetItem({{}, dataSet.Description(), QString::number(dataSet.ID())});
  row->setToolTip(Description, dataSet.Description());
  ShowState(row, dataSet.ProcessState());
  return row;
}

void MainList::UpdateRow(const CData& dataSet) {
  for (QTreeWidgetItem* row : findItems(QString::number(dataSet.ID()), Qt::MatchExactly, ID)) {
    ShowState(row, dataSet.ProcessState());
    row->setText(Description, dataSet.Description());
    row->setToolTip(Description, dataSet.Description());
  }
}

void MainList::KeepPlace(const std::function<void()>& change) {
  const QTreeWidgetItem* top = itemAt(0, 0);
  const QString topID = top ? top->text(ID) : QString();
  const int before = top ? visualItemRect(top).top() : 0;
  change();
  const auto found = findItems(topID, Qt::MatchExactly, ID);
  if (top && !found.isEmpty())
    verticalScrollBar()->setValue(verticalScrollBar()->value() + visualItemRect(found.first()).top() -
                                  before);
}

void MainList::RemoveRows(qint32 id) { qDeleteAll(findItems(QString::number(id), Qt::MatchExactly, ID)); }

bool MainList::SelectRow(int row) {
  const QSignalBlocker quiet(this);
  QTreeWidgetItem* item = topLevelItem(row);
  if (item) setCurrentItem(item, Description);
  return item != nullptr;
}

int MainList::RowOf(const QString& description) const {
  const auto found = findItems(description, Qt::MatchExactly | Qt::MatchCaseSensitive, Description);
  return found.isEmpty() ? -1 : indexOfTopLevelItem(found.first());
}

QString MainList::CurrentDescription() const {
  return currentItem() ? currentItem()->text(Description) : QString();
}

void MainList::SetHint(const QString& hint) {
  hint_ = hint;
  setAccessibleDescription(hint);
  viewport()->update();
}

void MainList::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (currentItem()) Q_EMIT RowActivated();
      break;
    case Qt::Key_Delete:
      if (currentItem()) Q_EMIT DeletePressed();
      break;
    default:
      QTreeWidget::keyPressEvent(event);
  }
}

void MainList::mouseReleaseEvent(QMouseEvent* event) {
  QTreeWidget::mouseReleaseEvent(event);
  if (event->button() == Qt::RightButton) Q_EMIT MenuRequested(event->globalPosition().toPoint());
}

void MainList::mouseDoubleClickEvent(QMouseEvent* event) {
  QTreeWidget::mouseDoubleClickEvent(event);
  if (event->button() == Qt::LeftButton && itemAt(event->position().toPoint())) Q_EMIT RowActivated();
}

void MainList::contextMenuEvent(QContextMenuEvent* event) {
  // The mouse opens the menu when its button is released.
  if (event->reason() == QContextMenuEvent::Mouse) return;
  const QRect row = visualItemRect(currentItem());
  const QPoint place = row.isValid() ? row.center() : viewport()->rect().center();
  Q_EMIT MenuRequested(viewport()->mapToGlobal(place));
}

void MainList::resizeEvent(QResizeEvent* event) {
  QTreeWidget::resizeEvent(event);
  SizeColumns();
}

void MainList::paintEvent(QPaintEvent* event) {
  QTreeWidget::paintEvent(event);
  if (topLevelItemCount() > 0 || hint_.isEmpty()) return;
  QPainter painter(viewport());
  painter.setPen(palette().color(QPalette::PlaceholderText));
  const int margin = fontMetrics().height();
  painter.drawText(viewport()->rect().adjusted(margin, margin, -margin, -margin),
                   Qt::AlignCenter | Qt::TextWordWrap, hint_);
}
