// The rows of the main list: those of all data sets that the filter lets through, in the order asked for.
#pragma once

#include <QAbstractTableModel>
#include <array>
#include <span>
#include <vector>

#include "data/CData.h"

class MainListModel : public QAbstractTableModel {
  Q_OBJECT
 public:
  enum Column { State, Description, ID, Cpk, Samples, LastModified, ColumnCount };

  struct Filter {
    QString text;  // each of its words has to stand somewhere in the description
    bool onlyOutOfControl = false;
    bool LetsAllThrough() const { return text.trimmed().isEmpty() && !onlyOutOfControl; }
  };

  using QAbstractTableModel::QAbstractTableModel;

  // All data sets, in the library's order. The next Arrange shows what is changed here.
  void Clear();
  void Append(std::span<const CDataPtr> dataSets);
  void Append(const CData& dataSet);
  void Insert(size_t place, const CData& dataSet);
  void Update(const CData& dataSet);  // every row with the same ID
  void Remove(qint32 id);             // every row with that ID
  int Total() const { return int(rows_.size()); }
  std::array<int, 5> CountsByState() const;

  const Filter& Filtered() const { return filter_; }
  void SetFilter(const Filter& filter) { filter_ = filter; }
  void SortBy(int column, Qt::SortOrder direction);  // a negative column: the library's order

  // Shows the rows that fit, and the one with the ID `kept` whether it fits or not.
  void Arrange(qint32 kept);
  // Shows what was appended, at little cost, where all is shown in the library's order.
  bool IsPlain() const { return filter_.LetsAllThrough() && sortedBy_ < 0; }
  void ShowAppended();

  int RowWith(qint32 id) const;  // of those shown; -1 for none
  std::vector<qint32> ShownIDs() const;
  qint32 IDAt(int row) const { return At(row).id; }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  struct Row {
    qint32 id;
    int state, samples;
    double cpk;
    QString description, searched, lastModified;
  };
  static Row RowOf(const CData& dataSet);
  const Row& At(int row) const { return rows_[shown_[size_t(row)]]; }
  static QString Text(const Row& row, int column);
  void Order();
  template <class KeyOf>
  void OrderBy(KeyOf keyOf);

  std::vector<Row> rows_;
  std::vector<quint32> order_, shown_;  // places in rows_: of all in their order, and of those that are shown
  bool isOrdered_ = true;
  Filter filter_;
  int sortedBy_ = -1;
  Qt::SortOrder direction_ = Qt::AscendingOrder;
};
