#include "charts/PointList.h"

#include <QStringList>

#include "texts/PageWords.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

QString PointList(const std::vector<qint16>& points, qsizetype mostPieces) {
  constexpr size_t shortestRun = 3;
  QStringList pieces;
  for (size_t i = 0; i < points.size();) {
    if (pieces.size() == mostPieces) return Words::Verdict::andMore(pieces.join(u", "_s), points.size() - i);
    size_t end = i + 1;
    while (end < points.size() && points[end] == points[end - 1] + 1) ++end;
    if (end - i < shortestRun) end = i + 1;
    pieces.append(end == i + 1 ? QString::number(points[i])
                               : QString::number(points[i]) + u'\u2013' + QString::number(points[end - 1]));
    i = end;
  }
  return pieces.join(u", "_s);
}
