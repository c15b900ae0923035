#include "screens/MainListModel.h"

#include <QCollator>
#include <QStringMatcher>
#include <algorithm>
#include <numeric>

#include "screens/Controls.h"
#include "screens/Indicators.h"
#include "texts/DetectionRules.h"
#include "texts/SharingWords.h"
#include "texts/Texts.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace {
constexpr int notEvaluated = 0, chaos = 1, brinkOfChaos = 2, ideal = 4;
}

MainListModel::Row MainListModel::RowOf(const CData& dataSet) {
  const int state = dataSet.ProcessState();
  return {.id = dataSet.ID(),
          .state = state > notEvaluated && state <= ideal ? state : notEvaluated,
          .samples = dataSet.SampleQty(),
          .cpk = dataSet.CPKValue(),
          .description = dataSet.Description(),
          .searched = dataSet.Description().toCaseFolded(),
          .lastModified = dataSet.LastModified()};
}

void MainListModel::Clear() {
  rows_.clear();
  isOrdered_ = false;
  Arrange(0);
}

void MainListModel::Append(std::span<const CDataPtr> dataSets) {
  for (const CDataPtr& dataSet : dataSets) Append(*dataSet);
}

void MainListModel::Append(const CData& dataSet) { Insert(rows_.size(), dataSet); }

void MainListModel::Insert(size_t place, const CData& dataSet) {
  rows_.insert(rows_.begin() + std::ptrdiff_t(std::min(place, rows_.size())), RowOf(dataSet));
  isOrdered_ = false;
}

void MainListModel::Update(const CData& dataSet) {
  const auto isIt = [id = dataSet.ID()](const Row& row) { return row.id == id; };
  std::ranges::replace_if(rows_, isIt, RowOf(dataSet));
  isOrdered_ = false;
}

void MainListModel::Remove(qint32 id) {
  std::erase_if(rows_, [id](const Row& row) { return row.id == id; });
  isOrdered_ = false;
}

std::array<int, 5> MainListModel::CountsByState() const {
  std::array<int, 5> counts{};
  for (const Row& row : rows_) ++counts[size_t(row.state)];
  return counts;
}

// What is shown

template <class KeyOf>
void MainListModel::OrderBy(KeyOf keyOf) {
  std::vector<decltype(keyOf(rows_[0]))> keys;
  keys.reserve(rows_.size());
  for (const Row& row : rows_) keys.push_back(keyOf(row));
  std::ranges::stable_sort(order_, [&](quint32 a, quint32 b) {
    return direction_ == Qt::AscendingOrder ? keys[a] < keys[b] : keys[b] < keys[a];
  });
}

void MainListModel::Order() {
  isOrdered_ = true;
  order_.resize(rows_.size());
  std::iota(order_.begin(), order_.end(), 0U);
  if (sortedBy_ == Description) {
    // Without a language there is neither case nor number to go by.
    QCollator collator(QLocale().language() == QLocale::C ? QLocale(QLocale::English) : QLocale());
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    collator.setNumericMode(true);
    OrderBy([&](const Row& row) { return collator.sortKey(row.description); });
  }
  if (sortedBy_ == State) OrderBy([](const Row& row) { return row.state; });
  if (sortedBy_ == Cpk) OrderBy([](const Row& row) { return row.cpk; });
  if (sortedBy_ == Samples) OrderBy([](const Row& row) { return row.samples; });
  if (sortedBy_ == LastModified) OrderBy([](const Row& row) { return QStringView(row.lastModified); });
  // What has neither state nor Cpk is neither the best nor the worst.
  if (sortedBy_ == State || sortedBy_ == Cpk)
    std::ranges::stable_partition(order_, [&](quint32 place) { return rows_[place].state != notEvaluated; });
}

void MainListModel::SortBy(int column, Qt::SortOrder direction) {
  sortedBy_ = column;
  direction_ = direction;
  isOrdered_ = false;
}

void MainListModel::Arrange(qint32 kept) {
  std::vector<QStringMatcher> words;
  for (const QString& word : filter_.text.toCaseFolded().split(u' ', Qt::SkipEmptyParts))
    words.emplace_back(word);
  const auto fits = [&](quint32 place) {
    const Row& row = rows_[place];
    if (kept != 0 && row.id == kept) return true;
    if (filter_.onlyOutOfControl && row.state != chaos && row.state != brinkOfChaos) return false;
    const auto stands = [&](const QStringMatcher& word) { return word.indexIn(row.searched) >= 0; };
    return std::ranges::all_of(words, stands);
  };
  beginResetModel();
  if (!isOrdered_) Order();
  shown_.clear();
  std::ranges::copy_if(order_, std::back_inserter(shown_), fits);
  endResetModel();
}

void MainListModel::ShowAppended() {
  beginInsertRows({}, int(shown_.size()), Total() - 1);
  Order();
  shown_ = order_;
  endInsertRows();
}

int MainListModel::RowWith(qint32 id) const {
  const auto found = std::ranges::find(shown_, id, [this](quint32 place) { return rows_[place].id; });
  return found == shown_.end() ? -1 : int(found - shown_.begin());
}

std::vector<qint32> MainListModel::ShownIDs() const {
  std::vector<qint32> ids;
  ids.reserve(shown_.size());
  for (const quint32 place : shown_) ids.push_back(rows_[place].id);
  return ids;
}

// What the view asks

int MainListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : int(shown_.size());
}

int MainListModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : int(ColumnCount);
}

QString MainListModel::Text(const Row& row, int column) {
  switch (column) {
    case Description:
      return row.description;
    case ID:
      return QString::number(row.id);
    case Cpk:
      return row.state == notEvaluated ? QString() : QString::number(row.cpk, 'f', 2);
    case Samples:
      return QString::number(row.samples);
    case LastModified:
      return row.lastModified;
    default:
      return {};
  }
}

QVariant MainListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const Row& row = At(index.row());
  const bool isState = index.column() == State;
  switch (role) {
    case Qt::DisplayRole:
      return Text(row, index.column());
    case Qt::DecorationRole:
      return isState ? QVariant(ProcessStateIcon(row.state)) : QVariant();
    case Qt::ToolTipRole:
      return isState ? ProcessState::Name(row.state) : PlainToolTip(Text(row, index.column()));
    case Qt::AccessibleTextRole:
      return isState ? ProcessState::Name(row.state) : Text(row, index.column());
    case Qt::TextAlignmentRole:
      return int(Qt::AlignVCenter |
                 (index.column() == Cpk || index.column() == Samples ? Qt::AlignRight : Qt::AlignLeft));
    default:
      return {};
  }
}

QVariant MainListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return {};
  if (role == Qt::TextAlignmentRole && (section == Cpk || section == Samples))
    return int(Qt::AlignRight | Qt::AlignVCenter);
  if (role == Qt::ToolTipRole) return Words::Main::sortTip();
  if (role != Qt::DisplayRole && role != Qt::AccessibleTextRole) return {};
  switch (section) {
    case State:  // its caption is empty
      return role == Qt::AccessibleTextRole ? Words::Sharing::state() : QString();
    case Description:
      return LoadResText(u"Data Description;186");
    case Cpk:
      return Words::Figure::cpk();
    case Samples:
      return Words::Figure::samples();
    case LastModified:
      return Words::Figure::lastModified();
    default:
      return {};
  }
}
