// The page of two data sets beside each other: verdicts, control charts, histograms and figures, on the same
// scales where that makes sense.
#pragma once

#include <QDateTime>
#include <array>

#include "charts/PageOutput.h"
#include "data/CData.h"
#include "platform/chart/ChartPage.h"

struct ComparePageOptions {
  bool sameScale = true;  // where the units agree
  QString libraryName{};  // left out where it is empty
  QDateTime printedAt{};  // left out where it is null
};

class ComparePage : public OutputPage {
 public:
  // Records the page; the data sets are not needed afterwards. ScaleError when a scale cannot be made, Error
  // when the engine refuses a data set.
  ComparePage(const CData& one, const CData& other, const ComparePageOptions& options);

  // The same name, or none, for what was measured.
  static bool UnitsAgree(const CData& one, const CData& other);

  void PaintOut(QPainter& painter, const QRectF& target, double smallestText) const override;
  QString Description() const override { return description_; }
  const ChartPage& Page() const { return page_; }

 private:
  static constexpr int columns = 3;  // of one, of the other, of both

  void RecordOf(const CData& data, const QString& letter, int column);
  void RecordFacts(const CData& one, const CData& other, bool isSameScale, const ComparePageOptions& options);

  QString description_;
  ChartPage page_;
  std::array<ChartGraph, columns> heads_, verdicts_;  // the two strips above the page
};
