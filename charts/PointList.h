// Numbers of points as a short text.
#pragma once

#include <QString>
#include <vector>

// Ascending numbers: "3, 38-41, 50"; beyond so many pieces the rest is counted.
constexpr qsizetype MostPointPieces = 6;
QString PointList(const std::vector<qint16>& points, qsizetype mostPieces = MostPointPieces);
