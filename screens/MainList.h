// The main window's list of data sets: one row each, with the process state's icon, the description, the
// hidden ID and the figures that it can be sorted by.
#pragma once

#include <QTreeView>
#include <functional>
#include <span>
#include <vector>

#include "screens/MainListModel.h"

class MainList : public QTreeView {
  Q_OBJECT
 public:
  explicit MainList(QWidget* parent = nullptr);

  void Clear();
  void AddRows(std::span<const CDataPtr> dataSets);  // while a library loads

  // Changes the rows. The current one stays current, also where it no longer fits the filter; where it is
  // gone, its neighbour becomes current. What is in view stays in its place. There is no ItemClick.
  void Change(const std::function<void(MainListModel& rows)>& change);

  // Makes the data set's row current, and shows it whatever the filter, without an ItemClick; false where
  // there is none.
  bool Select(qint32 id);
  // A wide description does not push the icons out of sight.
  void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
  bool HasCurrent() const { return currentIndex().isValid(); }

  // From the top; mostly the current one alone. Several by Ctrl or Shift with mouse or keys.
  std::vector<qint32> Selected() const;
  bool IsCurrentAloneSelected() const;
  QString CurrentDescription() const;  // empty for none
  const MainListModel& Rows() const { return *rows_; }

  // Shows only what fits, and makes the first of it current where the current row does not. ItemClick tells.
  void SetFilter(const MainListModel::Filter& filter);

  // What stands in the middle of the list while it holds no data sets.
  void SetHint(const QString& hint);

  // The widths that the user has chosen, in words; empty for none.
  QString ColumnWidths() const;
  void SetColumnWidths(const QString& widths);

 Q_SIGNALS:
  void ItemClick(const QString& description);  // another row became current; empty: none is
  void RowActivated();                         // double-click or Enter
  void DeletePressed();
  void EscapePressed();
  void MenuRequested(const QPoint& globalPosition);
  void Arranged();        // other rows are shown, or others of them
  void SelectedOthers();  // or the current one is another

 protected:
  void keyboardSearch(const QString& search) override;
  QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                       const QEvent* event) const override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  bool event(QEvent* event) override;

 private:
  void SetupListColumns();
  void SizeColumns();
  void ColumnResized(int column, int width);
  void Sort(int column, Qt::SortOrder direction);
  qint32 CurrentID() const { return HasCurrent() ? rows_->IDAt(currentIndex().row()) : 0; }
  void MakeCurrent(int row);
  void SelectAlso(const std::vector<qint32>& ids);
  void KeepPlace(const std::function<void()>& rearrange);
  void RequestMenu();
  QString Hint() const;  // empty while there are rows
  void Describe();

  MainListModel* rows_;
  QString hint_;            // where there are no data sets
  qint32 lastCurrent_ = 0;  // the ID of the row that is current, or was before none was left
  int chosenWidth_ = 0;     // of the description; 0: what the others leave
  bool isSizing_ = false;
};
