#include "charts/TextWindow.h"

#include "charts/ControlChart.h"
#include "platform/chart/Palette.h"
#include "platform/language/Conversions.h"

using namespace Qt::StringLiterals;

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

  void Add(const QString& label, const QString& value, const TextParameters& valueText = {9, 16, 9, 0}) {
    const double y = firstRow + rowPitch * row_++;
    graph_.Draw(ChartGraph::Text{
        {labelsLeft, y}, Alignment::LeftMiddle, label, {0, 16, 9, 0}, valuesLeft - labelsLeft - 0.02});
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
    graph.Title(u"NOT ENOUGH DATA"_s, {14, 16, 12, 3});
    return;
  }
  const auto text = [](double value) { return Conversions::CStr(value); };
  Rows rows(graph);
  rows.Add(u"Sample Qty"_s, text(data.SampleQty()));
  rows.Add(u"Sub Group Size"_s, text(data.SubGroupSize()));
  rows.Add(u"Min"_s, text(data.MinValue()));
  rows.Add(u"Max"_s, text(data.MaxValue()));
  rows.Add(u"Std. Dev"_s, text(data.StdDevValue()));
  rows.Add(u"Upper Spec Limit"_s, text(data.UpperSpecLimit()));
  rows.Add(u"Lower Spec Limit"_s, text(data.LowerSpecLimit()));
  const bool isCapable = data.CPKValue() >= 1.0;
  rows.Add(u"Cpk"_s, QString::number(data.CPKValue(), 'f', 2), {isCapable ? 2 : 12, 16, 10, 0});
  rows.Add(u"Last Modified"_s, data.LastModified());
  rows.AddNote(data.SubGroupSize() > 1 ? u"Cpk from R-bar / d2"_s
                                       : u"Cpk from R-bar / d2 (moving ranges of two)"_s);
}
