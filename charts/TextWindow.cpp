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

using TextParameters = ChartGraph::TextParameters;

constexpr double labelsLeft = 0.08;
constexpr double valuesLeft = 0.52;
constexpr double right = 0.98;
constexpr double summaryPitch = 0.056;
constexpr double capabilityPitch = 0.054;
constexpr double betweenBlocks = 0.016;
constexpr int documented = 10;  // importance of the rows of the summary: all others go first
constexpr TextParameters small{Palette::Black, 16, 5, 0};
constexpr TextParameters smallValue{Palette::Blue, 16, 5, 0};
constexpr TextParameters absent{Palette::Grey, 16, 5, 0};

// A text with what stands in its place where there is less room.
struct Wording {
  QString text;
  QStringList shorter{};
};

class Rows {
 public:
  void Add(double pitch, int importance) { table_.lines.push_back({{}, pitch, importance}); }
  void Put(double from, double to, const Wording& words, const TextParameters& parameters) {
    table_.lines.back().cells.push_back({from, to, words.text, parameters, words.shorter});
  }
  void Space(double height) { table_.lines.back().pitch += height; }
  ChartGraph::Table Take() { return std::move(table_); }

 private:
  ChartGraph::Table table_{0.045, {}};
};

// What the summary says of a value that there is not.
Wording WhyAbsent(const CData& data) { return {WhyNoCpk(data), {Words::Capability::none()}}; }

// What a good Cpk is not to hide.
Wording Caution(const CData& data) {
  using namespace Words::Capability;
  if (data.IsInControl()) return {cautionRanges(), {cautionRangesShort(), cautionShortest(), {}}};
  return {caution(), {cautionShort(), cautionShortest(), {}}};
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
  const auto add = [&](const Wording& label, const Wording& value, const TextParameters& parameters) {
    rows.Add(summaryPitch, documented);
    rows.Put(labelsLeft, valuesLeft, label, {Palette::Black, 16, 9, 0});
    rows.Put(valuesLeft, right, value, parameters);
  };
  const auto row = [&](const Wording& label, const Wording& value) {
    add(label, value, {Palette::Blue, 16, 9, 0});
  };
  const auto text = [](double value) { return Wording{Conversions::CStr(value)}; };
  const bool isSpecified = SpecificationOf(data) != Specification::None;
  const auto limit = [&](const Wording& label, double value) {
    if (isSpecified) return row(label, text(value));
    add(label, {Words::Capability::notGiven(), {Words::Capability::none()}}, {Palette::Grey, 16, 9, 0});
  };
  row({Words::Figure::sampleQty(), {Words::Figure::samples()}}, text(data.SampleQty()));
  row({Words::Figure::subGroupSize(), {Words::Capability::subgroupShort()}}, text(data.SubGroupSize()));
  row({Words::Figure::min()}, text(data.MinValue()));
  row({Words::Figure::max()}, text(data.MaxValue()));
  row({Words::Figure::stdDev()}, text(data.StdDevValue()));
  limit({Words::Figure::upperSpecLimit(), {Words::Figure::usl()}}, data.UpperSpecLimit());
  limit({Words::Figure::lowerSpecLimit(), {Words::Figure::lsl()}}, data.LowerSpecLimit());
  if (!data.Capability().cpk) {
    add({Words::Figure::cpk()}, WhyAbsent(data), {Palette::Grey, 16, 9, 0});
  } else {
    const bool isCapable = data.CPKValue() >= 1.0;
    add({Words::Figure::cpk()}, {QString::number(data.CPKValue(), 'f', 2)},
        {isCapable ? Palette::Green : Palette::Red, 16, 10, 0});
    if (isCapable && !(data.IsInControl() && data.RangesOutside().empty()))
      rows.Put(0.67, right, Caution(data), {Palette::Red, 16, 4, 0});
  }
  row({Words::Figure::lastModified(), {Words::Capability::modifiedShort()}},
      {data.LastModified(), {data.LastModified().section(u' ', 0, 0)}});
  rows.Space(betweenBlocks);
}

void DrawCapability(Rows& rows, const CData& data) {
  const engine::Capability& capability = data.Capability();
  const Wording none = WhyAbsent(data);
  const auto put = [&](double from, double middle, double to, const Wording& label,
                       const std::optional<QString>& value, const Wording& ifAbsent) {
    rows.Put(from, middle, label, small);
    rows.Put(middle, to, value ? Wording{*value} : ifAbsent, value ? smallValue : absent);
  };
  const auto index = [](const std::optional<double>& value) {
    return value ? std::optional(Index(*value)) : std::nullopt;
  };
  const auto pair = [&](int importance, const Text<>& one, const std::optional<QString>& oneValue,
                        const Wording& other, const std::optional<QString>& otherValue,
                        const Wording& ifAbsent) {
    rows.Add(capabilityPitch, importance);
    put(labelsLeft, 0.25, valuesLeft, {one()}, oneValue, ifAbsent);
    put(valuesLeft, 0.69, right, other, otherValue, ifAbsent);
  };
  const auto row = [&](int importance, const Wording& label, const std::optional<QString>& value) {
    rows.Add(capabilityPitch, importance);
    put(labelsLeft, valuesLeft, right, label, value, none);
  };
  const bool isSpecified = SpecificationOf(data) != Specification::None;
  pair(4, Words::Figure::mean, Figure(data, capability.mean),
       {Words::Figure::nominal(), {Words::Capability::nominalShort()}},
       isSpecified ? std::optional(Conversions::CStr(data.NominalSpecLimit())) : std::nullopt,
       {Words::Capability::notGiven(), {Words::Capability::none()}});
  pair(8, Words::Capability::cp, index(capability.cp), {Words::Capability::pp()}, index(capability.pp), none);
  pair(7, Words::Figure::cpk, index(capability.cpk), {Words::Capability::ppk()}, index(capability.ppk), none);
  const bool hasSubgroups = data.SubGroupSize() > 1;
  row(3,
      {hasSubgroups ? Words::Capability::sigmaFromRanges() : Words::Capability::sigmaFromMovingRanges(),
       {Words::Capability::sigmaWithin()}},
      Figure(data, capability.sigmaWithin));
  row(2, {Words::Capability::sigmaOverall(), {Words::Capability::sigmaOverallShort()}},
      Figure(data, capability.sigmaOverall));
  const auto outside = capability.samplesOutside;
  row(6, {Words::Capability::outside(), {Words::Capability::outsideShort()}},
      outside ? std::optional(Words::Capability::countedOf(*outside, data.SampleQty())) : std::nullopt);
  const auto expected = capability.ExpectedOutside();
  row(5, {Words::Capability::expected(), {Words::Capability::expectedShort()}},
      expected ? std::optional(Percent(*expected)) : std::nullopt);
  rows.Add(capabilityPitch, 1);
  rows.Put(labelsLeft, right,
           {hasSubgroups ? Words::Page::cpkFromRanges() : Words::Page::cpkFromMovingRanges()},
           {Palette::Grey, 16, 4, 0});
}

}  // namespace

QString WhyNoCpk(const CData& data) {
  switch (SpecificationOf(data)) {
    case Specification::None:
      return Words::Capability::noSpecification();
    case Specification::Reversed:
      return Words::Capability::limitsReversed();
    default:
      return Words::Capability::noVariation();
  }
}

void DrawTavelTextWindow(ChartGraph& graph, const CData& data) {
  if (data.NumberOfPlotPoints() < FewestPlotPoints) {
    graph.Title(Words::Page::tooFewToSumUp(), {Palette::Yellow, 16, 12, 3});
    return;
  }
  Rows rows;
  DrawSummary(rows, data);
  DrawCapability(rows, data);
  graph.Draw(rows.Take());
}
