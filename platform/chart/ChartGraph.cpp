#include "platform/chart/ChartGraph.h"

#include <stdexcept>

const std::vector<double>& ChartGraph::DataSet(const QString& name) const {
  const auto found = dataSets_.constFind(name);
  if (found == dataSets_.constEnd()) throw std::out_of_range("no data set " + name.toStdString());
  return *found;
}
