#include "charts/TextWindow.h"

#include "charts/ControlChart.h"
#include "platform/chart/Palette.h"
#include "platform/language/Conversions.h"
#include "texts/Words.h"

namespace {

using Alignment = ChartGraph::Alignment;
using TextParameters = ChartGraph::TextParameters;

constexpr double labelsLeft = 0.08;
constexpr double valuesLeft = 0.52;
constexpr double firstRow = 0.09;
constexpr double rowPitch = 0.093;

class Rows {
 public:
  explicit Rows(ChartGraph& graph) : graph_(graph) {}

  void Add(const QString& label, const QString& value,
           const TextParameters& valueText = {Palette::Blue, 16, 9, 0}) {
    const double y = firstRow + rowPitch * row_++;
    graph_.Draw(ChartGraph::Text{{labelsLeft, y},
                                 Alignment::LeftMiddle,
                                 label,
                                 {Palette::Black, 16, 9, 0},
                                 valuesLeft - labelsLeft - 0.02});
    graph_.Draw(
        ChartGraph::Text{{valuesLeft, y}, Alignment::LeftMiddle, value, valueText, 0.97 - valuesLeft});
  }

  void AddNote(const QString& note) {
    const double y = firstRow + rowPitch * row_++;
    graph_.Draw(
        ChartGraph::Text{{labelsLeft, y}, Alignment::LeftMiddle, note, {Palette::Grey, 16, 4, 0}, 0.9});
  }

 private:
  ChartGraph& graph_;
  int row_ = 0;
};

}  // namespace

void DrawTavelTextWindow(ChartGraph& graph, const CData& data) {
  if (data.NumberOfPlotPoints() < FewestPlotPoints) {
    graph.Title(Words::Page::tooFewToSumUp(), {Palette::Yellow, 16, 12, 3});
    return;
  }
  const auto text = [](double value) { return Conversions::CStr(value); };
  Rows rows(graph);
  rows.Add(Words::Figure::sampleQty(), text(data.SampleQty()));
  rows.Add(Words::Figure::subGroupSize(), text(data.SubGroupSize()));
  rows.Add(Words::Figure::min(), text(data.MinValue()));
  rows.Add(Words::Figure::max(), text(data.MaxValue()));
  rows.Add(Words::Figure::stdDev(), text(data.StdDevValue()));
  rows.Add(Words::Figure::upperSpecLimit(), text(data.UpperSpecLimit()));
  rows.Add(Words::Figure::lowerSpecLimit(), text(data.LowerSpecLimit()));
  const bool isCapable = data.CPKValue() >= 1.0;
  rows.Add(Words::Figure::cpk(), QString::number(data.CPKValue(), 'f', 2),
           {isCapable ? Palette::Green : Palette::Red, 16, 10, 0});
  rows.Add(Words::Figure::lastModified(), data.LastModified());
  rows.AddNote(data.SubGroupSize() > 1 ? Words::Page::cpkFromRanges() : Words::Page::cpkFromMovingRanges());
}
