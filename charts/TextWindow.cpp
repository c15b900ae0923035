#include "charts/TextWindow.h"

#include <algorithm>
#include <cmath>

#include "charts/ControlChart.h"
#include "charts/Histogram.h"
#include "engine/Decimal.h"
#include "platform/chart/Palette.h"
#include "platform/language/Conversions.h"
#include "texts/PageWords.h"
#include "texts/Words.h"

using namespace Qt::StringLiterals;

namespace {

using Alignment = ChartGraph::Alignment;
using TextParameters = ChartGraph::TextParameters;

constexpr double labelsLeft = 0.08;
constexpr double valuesLeft = 0.52;
constexpr double right = 0.98;
constexpr TextParameters small{Palette::Black, 16, 5, 0};
constexpr TextParameters smallValue{Palette::Blue, 16, 5, 0};
constexpr TextParameters absent{Palette::Grey, 16, 5, 0};

// A row's label, or its value, in the room between two positions across the graph.
class Rows {
 public:
  Rows(ChartGraph& graph, double first, double pitch) : graph_(graph), y_(first), pitch_(pitch) {}

  void Put(double from, double to, const QString& text, const TextParameters& parameters) {
    graph_.Draw(ChartGraph::Text{{from, y_}, Alignment::LeftMiddle, text, parameters, to - from - 0.01});
  }
  void Next() { y_ += pitch_; }

 private:
  ChartGraph& graph_;
  double y_;
  double pitch_;
};

// What the summary says of a value that there is not.
QString WhyAbsent(const CData& data) {
  switch (SpecificationOf(data)) {
    case Specification::None:
      return Words::Capability::noSpecification();
    case Specification::Reversed:
      return Words::Capability::limitsReversed();
    default:
      return Words::Capability::noVariation();
  }
}

QString Index(double value) { return QString::number(engine::RoundToPlaces(value, 2), 'f', 2); }

// With the decimals of the data set, and four digits at least.
QString Figure(const CData& data, double value) {
  constexpr int mostPlaces = 15;
  const int leading = value == 0 ? 0 : static_cast<int>(std::floor(std::log10(std::abs(value))));
  return Conversions::CStr(engine::RoundToPlaces(
      value, std::clamp(std::max<int>(data.PrecisionValue(), 3 - leading), 0, mostPlaces)));
}

QString Percent(double part) {
  constexpr double least = 0.0001;
  if (part > 0 && 100 * part < least) return Words::Capability::below(Conversions::CStr(least));
  return Words::Capability::percent(Conversions::CStr(engine::RoundToPlaces(100 * part, 4)));
}

void DrawSummary(Rows& rows, const CData& data) {
  const auto add = [&](const QString& label, const QString& value, const TextParameters& parameters) {
    rows.Put(labelsLeft, valuesLeft, label, {Palette::Black, 16, 9, 0});
    rows.Put(valuesLeft, right, value, parameters);
  };
  const auto row = [&](const QString& label, const QString& value) {
    add(label, value, {Palette::Blue, 16, 9, 0});
    rows.Next();
  };
  const auto text = [](double value) { return Conversions::CStr(value); };
  const bool isSpecified = SpecificationOf(data) != Specification::None;
  const auto limit = [&](double value) { return isSpecified ? text(value) : Words::Capability::notGiven(); };
  row(Words::Figure::sampleQty(), text(data.SampleQty()));
  row(Words::Figure::subGroupSize(), text(data.SubGroupSize()));
  row(Words::Figure::min(), text(data.MinValue()));
  row(Words::Figure::max(), text(data.MaxValue()));
  row(Words::Figure::stdDev(), text(data.StdDevValue()));
  row(Words::Figure::upperSpecLimit(), limit(data.UpperSpecLimit()));
  row(Words::Figure::lowerSpecLimit(), limit(data.LowerSpecLimit()));
  if (!data.Capability().cpk) {
    add(Words::Figure::cpk(), WhyAbsent(data), {Palette::Grey, 16, 9, 0});
  } else {
    const bool isCapable = data.CPKValue() >= 1.0;
    add(Words::Figure::cpk(), QString::number(data.CPKValue(), 'f', 2),
        {isCapable ? Palette::Green : Palette::Red, 16, 10, 0});
    if (isCapable && !data.IsInControl())
      rows.Put(0.67, right, Words::Capability::caution(), {Palette::Red, 16, 4, 0});
  }
  rows.Next();
  row(Words::Figure::lastModified(), data.LastModified());
}

void DrawCapability(Rows& rows, const CData& data) {
  const engine::Capability& capability = data.Capability();
  const QString none = WhyAbsent(data);
  const auto half = [&](double from, const QString& label, const std::optional<QString>& value) {
    const double middle = from + 0.17;
    rows.Put(from, middle, label, small);
    rows.Put(middle, from + 0.44, value.value_or(none), value ? smallValue : absent);
  };
  const auto index = [](const std::optional<double>& value) {
    return value ? std::optional(Index(*value)) : std::nullopt;
  };
  const auto pair = [&](const Text<>& one, const std::optional<QString>& oneValue, const Text<>& other,
                        const std::optional<QString>& otherValue) {
    half(labelsLeft, one(), oneValue);
    half(valuesLeft, other(), otherValue);
    rows.Next();
  };
  const auto row = [&](const QString& label, const std::optional<QString>& value) {
    rows.Put(labelsLeft, valuesLeft, label, small);
    rows.Put(valuesLeft, right, value.value_or(none), value ? smallValue : absent);
    rows.Next();
  };
  const bool isSpecified = SpecificationOf(data) != Specification::None;
  pair(Words::Figure::mean, Figure(data, capability.mean), Words::Figure::nominal,
       isSpecified ? Conversions::CStr(data.NominalSpecLimit()) : Words::Capability::notGiven());
  pair(Words::Capability::cp, index(capability.cp), Words::Capability::pp, index(capability.pp));
  pair(Words::Figure::cpk, index(capability.cpk), Words::Capability::ppk, index(capability.ppk));
  const bool hasSubgroups = data.SubGroupSize() > 1;
  row(hasSubgroups ? Words::Capability::sigmaFromRanges() : Words::Capability::sigmaFromMovingRanges(),
      Figure(data, capability.sigmaWithin));
  row(Words::Capability::sigmaOverall(), Figure(data, capability.sigmaOverall));
  const auto outside = capability.samplesOutside;
  row(Words::Capability::outside(),
      outside ? std::optional(Words::Capability::countedOf(*outside, data.SampleQty())) : std::nullopt);
  const auto expected = capability.ExpectedOutside();
  row(Words::Capability::expected(), expected ? std::optional(Percent(*expected)) : std::nullopt);
  rows.Put(labelsLeft, right,
           hasSubgroups ? Words::Page::cpkFromRanges() : Words::Page::cpkFromMovingRanges(),
           {Palette::Grey, 16, 4, 0});
}

}  // namespace

void DrawTavelTextWindow(ChartGraph& graph, const CData& data) {
  if (data.NumberOfPlotPoints() < FewestPlotPoints) {
    graph.Title(Words::Page::tooFewToSumUp(), {Palette::Yellow, 16, 12, 3});
    return;
  }
  Rows summary(graph, 0.045, 0.056);
  DrawSummary(summary, data);
  Rows capability(graph, 0.565, 0.054);
  DrawCapability(capability, data);
}
