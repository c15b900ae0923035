#include "charts/TextWindow.h"

#include <algorithm>
#include <cmath>
#include <functional>

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
constexpr TextParameters absent{Palette::FaintText, 16, 5, 0};

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

bool IsCapable(const CData& data) { return data.CPKValue() >= 1.0; }

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
    add(label, {Words::Capability::notGiven(), {Words::Capability::none()}}, {Palette::FaintText, 16, 9, 0});
  };
  row({Words::Figure::sampleQty(), {Words::Figure::samples()}}, text(data.SampleQty()));
  row({Words::Figure::subGroupSize(), {Words::Capability::subgroupShort()}}, text(data.SubGroupSize()));
  row({Words::Figure::min()}, text(data.MinValue()));
  row({Words::Figure::max()}, text(data.MaxValue()));
  row({Words::Figure::stdDev()}, text(data.StdDevValue()));
  limit({Words::Figure::upperSpecLimit(), {Words::Figure::usl()}}, data.UpperSpecLimit());
  limit({Words::Figure::lowerSpecLimit(), {Words::Figure::lsl()}}, data.LowerSpecLimit());
  if (!data.Capability().cpk) {
    add({Words::Figure::cpk()}, WhyAbsent(data), {Palette::FaintText, 16, 9, 0});
  } else {
    const bool isCapable = IsCapable(data);
    add({Words::Figure::cpk()}, {QString::number(data.CPKValue(), 'f', 2)},
        {isCapable ? Palette::Green : Palette::WarningText, 16, 10, 0});
    if (isCapable && !(data.IsInControl() && data.RangesOutside().empty()))
      rows.Put(0.67, right, Caution(data), {Palette::WarningText, 16, 4, 0});
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
           {Palette::FaintText, 16, 4, 0});
}

struct Value {
  Wording words;
  int ink = Palette::Blue;
};

// A row of the figures of two, with what it says of each.
struct RowOfTwo {
  int importance;
  Wording label;
  std::function<Value(const CData&)> valueOf;
};

Value IndexValue(const std::optional<double>& index) {
  return index ? Value{{Index(*index)}} : Value{{Words::Capability::none()}, Palette::FaintText};
}

Value CpkValue(const CData& data) {
  Value value = IndexValue(data.Capability().cpk);
  if (data.Capability().cpk) value.ink = IsCapable(data) ? Palette::Green : Palette::WarningText;
  return value;
}

std::vector<RowOfTwo> RowsOfTwo(bool haveUnits) {
  const auto limit = [](double (CData::*read)() const) {
    return [read](const CData& data) {
      if (SpecificationOf(data) != Specification::None) return Value{{Conversions::CStr((data.*read)())}};
      return Value{{Words::Capability::notGiven(), {Words::Capability::none()}}, Palette::FaintText};
    };
  };
  const auto number = [](auto read) {
    return [read](const CData& data) { return Value{{Conversions::CStr(double((data.*read)()))}}; };
  };
  const auto index = [](std::optional<double> engine::Capability::*of) {
    return [of](const CData& data) { return IndexValue(data.Capability().*of); };
  };
  const auto capability = [](double engine::Capability::*of) {
    return [of](const CData& data) { return Value{{Figure(data, data.Capability().*of)}}; };
  };
  const auto outside = [](const CData& data) {
    const auto count = data.Capability().samplesOutside;
    return count ? Value{{QString::number(*count)}} : IndexValue({});
  };
  const auto expected = [](const CData& data) {
    const auto part = data.Capability().ExpectedOutside();
    return part ? Value{{Percent(*part)}} : IndexValue({});
  };
  const auto modified = [](const CData& data) {
    return Value{{data.LastModified(), {data.LastModified().section(u' ', 0, 0)}}};
  };
  const auto unit = [](const CData& data) { return Value{{data.UnitOfMeasurement()}}; };
  std::vector<RowOfTwo> rows;
  if (haveUnits) rows.push_back({3, {Words::Comparison::unit()}, unit});
  rows.insert(rows.end(),
              {{7, {Words::Figure::sampleQty(), {Words::Figure::samples()}}, number(&CData::SampleQty)},
               {6,
                {Words::Figure::subGroupSize(), {Words::Capability::subgroupShort()}},
                number(&CData::SubGroupSize)},
               {10, {Words::Figure::mean()}, capability(&engine::Capability::mean)},
               {10, {Words::Figure::stdDev()}, number(&CData::StdDevValue)},
               {4, {Words::Capability::sigmaWithin()}, capability(&engine::Capability::sigmaWithin)},
               {8, {Words::Figure::min()}, number(&CData::MinValue)},
               {8, {Words::Figure::max()}, number(&CData::MaxValue)},
               {9, {Words::Figure::upperSpecLimit(), {Words::Figure::usl()}}, limit(&CData::UpperSpecLimit)},
               {2, {Words::Figure::nominal()}, limit(&CData::NominalSpecLimit)},
               {9, {Words::Figure::lowerSpecLimit(), {Words::Figure::lsl()}}, limit(&CData::LowerSpecLimit)},
               {8, {Words::Capability::cp()}, index(&engine::Capability::cp)},
               {10, {Words::Figure::cpk()}, CpkValue},
               {5, {Words::Capability::pp()}, index(&engine::Capability::pp)},
               {7, {Words::Capability::ppk()}, index(&engine::Capability::ppk)},
               {6, {Words::Comparison::outside(), {Words::Capability::outsideShort()}}, outside},
               {5, {Words::Capability::expected(), {Words::Capability::expectedShort()}}, expected},
               {1, {Words::Figure::lastModified(), {Words::Capability::modifiedShort()}}, modified}});
  return rows;
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

void DrawFiguresOfTwo(ChartGraph& graph, const CData& one, const CData& other) {
  constexpr double pitch = 0.0525, left = 0.04, columns[] = {0.43, 0.71, 0.99};
  const TextParameters name{Palette::Black, 16, 7, 3}, label{Palette::Black, 16, 6, 0};
  Rows rows;
  rows.Add(pitch, documented);
  rows.Put(columns[0], columns[1], {Words::Comparison::one()}, name);
  rows.Put(columns[1], columns[2], {Words::Comparison::other()}, name);
  const bool haveUnits = !one.UnitOfMeasurement().isEmpty() || !other.UnitOfMeasurement().isEmpty();
  for (const RowOfTwo& row : RowsOfTwo(haveUnits)) {
    rows.Add(pitch, row.importance);
    rows.Put(left, columns[0], row.label, label);
    int column = 0;
    for (const CData* data : {&one, &other}) {
      const Value value = row.valueOf(*data);
      rows.Put(columns[column], columns[column + 1], value.words, {value.ink, 16, 6, 0});
      ++column;
    }
  }
  graph.Draw(rows.Take());
}
