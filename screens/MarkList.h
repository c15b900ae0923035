// The list of a chart's marks: the ranges beyond their limits, then each broken rule with its points.
#pragma once

#include <QListView>
#include <vector>

#include "charts/StatPage.h"

class MarkList : public QListView {
  Q_OBJECT
 public:
  explicit MarkList(QWidget* parent = nullptr);

  void Show(const StatPage& page);  // a mark that was chosen stays so
  bool IsEmpty() const { return path_.empty(); }

  // Goes from that point (of no graph, 0: from before the first) to the next one that is marked, or with -1
  // to the one before; from the last to the first. Each point once: the ranges, then the averages.
  void Step(GraphId graph, int number, int step);

  QSize sizeHint() const override;

 Q_SIGNALS:
  void Chosen(GraphId graph, int number);  // by mouse, by key or by a step

 protected:
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

 private:
  class Rows;
  struct Stop {
    GraphId graph;
    int number;
    int row;
  };
  static std::pair<bool, int> PlaceOnPath(const Stop& stop);
  void Choose(const QModelIndex& index);

  Rows* rows_;
  std::vector<Stop> path_;  // of the steps, the ranges first; a point of several rules stands there for each
};
