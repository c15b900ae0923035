#include "screens/MarkList.h"

#include <QAbstractListModel>
#include <QScrollBar>
#include <algorithm>

#include "texts/ChartWords.h"
#include "texts/DetectionRules.h"

using namespace Qt::StringLiterals;

// Above the marks of each kind stand a heading and a row of words, which have no point.
class MarkList::Rows : public QAbstractListModel {
 public:
  using QAbstractListModel::QAbstractListModel;

  // False where they are the same as before.
  bool Set(const std::vector<StatPage::Mark>& marks) {
    std::vector<StatPage::Mark> rows;
    int rule = -1;
    for (const StatPage::Mark& mark : marks) {
      if (mark.rule != rule)
        rows.insert(rows.end(), {{mark.graph, heading, mark.rule}, {mark.graph, words, mark.rule}});
      rule = mark.rule;
      rows.push_back(mark);
    }
    if (rows == rows_) return false;
    beginResetModel();
    rows_.swap(rows);
    endResetModel();
    return true;
  }
  int RowOf(const StatPage::Mark& mark) const {
    const auto found = std::ranges::find(rows_, mark);
    return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
  }
  const StatPage::Mark& At(int row) const { return rows_.at(static_cast<size_t>(row)); }
  bool IsHeading(int row) const { return At(row).number <= 0; }

  int rowCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
  }
  Qt::ItemFlags flags(const QModelIndex& index) const override {
    return IsHeading(index.row()) ? Qt::ItemIsEnabled : Qt::ItemIsEnabled | Qt::ItemIsSelectable;
  }
  QVariant data(const QModelIndex& index, int role) const override {
    const StatPage::Mark& mark = At(index.row());
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole) return TextOf(mark);
    if (role == Qt::FontRole && mark.number <= 0) return FontOf(mark);
    return {};
  }

 private:
  static constexpr int heading = 0, words = -1;  // for a point's number

  static QString TextOf(const StatPage::Mark& mark) {
    const bool isRange = mark.rule == 0;
    if (mark.number == heading) return isRange ? Words::Marks::ranges() : Words::Marks::rule(mark.rule);
    // The short text of a rule begins with its number.
    if (mark.number == words)
      return isRange ? Words::Marks::lookHere() : DetectionRules::ShortText(mark.rule).section(u' ', 1);
    return isRange ? Words::Marks::range(mark.number) : Words::Marks::average(mark.number);
  }
  static QFont FontOf(const StatPage::Mark& mark) {
    QFont font;
    font.setBold(mark.number == heading);
    font.setItalic(mark.number == words);
    return font;
  }

  std::vector<StatPage::Mark> rows_;
};

std::pair<bool, int> MarkList::PlaceOnPath(const Stop& stop) {
  return {stop.graph != GraphId::R, stop.number};
}

MarkList::MarkList(QWidget* parent) : QListView(parent), rows_(new Rows(this)) {
  setModel(rows_);
  setUniformItemSizes(true);
  setEditTriggers(NoEditTriggers);
  setAccessibleName(Words::Marks::title());
  const auto choose = [this](const QModelIndex& index) { Choose(index); };
  connect(this, &QListView::clicked, this, choose);
  connect(this, &QListView::activated, this, choose);
}

void MarkList::Show(const StatPage& page) {
  const auto before =
      currentIndex().isValid() ? std::optional(rows_->At(currentIndex().row())) : std::nullopt;
  const int scrolled = verticalScrollBar()->value();
  if (!rows_->Set(page.Marks())) return;
  if (before) {
    const QSignalBlocker quiet(this);
    setCurrentIndex(rows_->index(rows_->RowOf(*before)));
  }
  verticalScrollBar()->setValue(scrolled);
  path_.clear();
  for (int row = 0; row < rows_->rowCount(); ++row) {
    if (!rows_->IsHeading(row)) path_.push_back({rows_->At(row).graph, rows_->At(row).number, row});
  }
  std::ranges::stable_sort(path_, {}, PlaceOnPath);
}

void MarkList::Step(GraphId graph, int number, int step) {
  if (path_.empty()) return;
  const auto here = PlaceOnPath({graph == GraphId::None ? GraphId::R : graph, number, 0});
  auto stop = step > 0 ? std::ranges::upper_bound(path_, here, {}, PlaceOnPath)
                       : std::ranges::lower_bound(path_, here, {}, PlaceOnPath);
  if (step > 0 && stop == path_.end()) stop = path_.begin();
  if (step < 0) stop = std::prev(stop == path_.begin() ? path_.end() : stop);
  const QModelIndex row = rows_->index(stop->row);
  scrollTo(row);
  if (row == currentIndex())
    Choose(row);
  else
    setCurrentIndex(row);
}

QSize MarkList::sizeHint() const {
  return {fontMetrics().averageCharWidth() * 20, fontMetrics().height() * 5};
}

void MarkList::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QListView::currentChanged(current, previous);
  Choose(current);
}

void MarkList::Choose(const QModelIndex& index) {
  if (!index.isValid() || rows_->IsHeading(index.row())) return;
  const StatPage::Mark& mark = rows_->At(index.row());
  Q_EMIT Chosen(mark.graph, mark.number);
}
