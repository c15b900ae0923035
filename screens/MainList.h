// The main window's list of data sets: one row each, with the process state's icon, the description and the
// hidden ID.
#pragma once

#include <QTreeWidget>
#include <functional>
#include <span>

#include "data/CData.h"

class MainList : public QTreeWidget {
  Q_OBJECT
 public:
  explicit MainList(QWidget* parent = nullptr);

  void AddRow(const CData& dataSet);
  void AddRows(std::span<const CDataPtr> dataSets);  // at the cost of adding one
  void InsertRow(int row, const CData& dataSet);
  void UpdateRow(const CData& dataSet);  // icon and description of the row with the same ID
  void RemoveRows(qint32 id);

  // Makes the row current without an ItemClick; false where there is no such row.
  bool SelectRow(int row);
  int RowOf(const QString& description) const;  // -1 for none
  QString CurrentDescription() const;           // empty for none

  // Runs what adds and removes rows, and leaves those that are in view in their places.
  void KeepPlace(const std::function<void()>& change);

  // What stands in the middle of the list while it has no rows.
  void SetHint(const QString& hint);

 Q_SIGNALS:
  void ItemClick(const QString& description);  // another row became current, by mouse or key
  void RowActivated();                         // double-click or Enter
  void DeletePressed();
  void MenuRequested(const QPoint& globalPosition);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  enum Column { Icon, Description, ID, ColumnCount };

  static QTreeWidgetItem* MakeRow(const CData& dataSet);
  void SetupListColumns();
  void SizeColumns();

  QString hint_;
};
