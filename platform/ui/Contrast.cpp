#include "platform/ui/Contrast.h"

#include <algorithm>
#include <cmath>

namespace {

double Luminance(const QColor& colour) {
  const auto linear = [](double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

QColor Mixed(const QColor& one, const QColor& other, double shareOfOther) {
  const auto mix = [&](double a, double b) { return static_cast<float>(a + (b - a) * shareOfOther); };
  return QColor::fromRgbF(mix(one.redF(), other.redF()), mix(one.greenF(), other.greenF()),
                          mix(one.blueF(), other.blueF()));
}

bool IsReadable(const QColor& ink, const QList<QColor>& grounds) {
  return std::ranges::all_of(
      grounds, [&](const QColor& ground) { return Contrast::Between(ink, ground) >= Contrast::readable; });
}

// The first of the colours on the way from one to the other that is readable; the other where none is.
QColor FirstReadable(const QColor& from, const QColor& to, const QList<QColor>& grounds) {
  constexpr int steps = 20;
  for (int step = 0; step < steps; ++step) {
    const QColor colour = Mixed(from, to, double(step) / steps);
    if (IsReadable(colour, grounds)) return colour;
  }
  return to;
}

}  // namespace

double Contrast::Between(const QColor& a, const QColor& b) {
  const auto [darker, lighter] = std::minmax({Luminance(a), Luminance(b)});
  return (lighter + 0.05) / (darker + 0.05);
}

QColor Contrast::Faint(const QColor& ink, const QList<QColor>& grounds) {
  return FirstReadable(Mixed(grounds.first(), ink, 0.5), ink, grounds);
}

QPalette Contrast::WithReadableHints(QPalette palette) {
  for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
    const QList<QColor> grounds{
        palette.color(group, QPalette::Base), palette.color(group, QPalette::AlternateBase),
        palette.color(group, QPalette::Window), palette.color(group, QPalette::Button)};
    const QColor ink = palette.color(QPalette::Active, QPalette::Text);
    palette.setColor(group, QPalette::PlaceholderText, Faint(ink, grounds));
    if (group == QPalette::Disabled)
      for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(group, role, Faint(palette.color(QPalette::Active, role), grounds));
    for (const auto role : {QPalette::Link, QPalette::LinkVisited})
      palette.setColor(group, role, FirstReadable(palette.color(group, role), ink, grounds));
    const QColor selected = palette.color(group, QPalette::HighlightedText);
    const QColor away = Between(selected, Qt::black) > Between(selected, Qt::white) ? Qt::black : Qt::white;
    palette.setColor(group, QPalette::Highlight,
                     FirstReadable(palette.color(group, QPalette::Highlight), away, {selected}));
  }
  return palette;
}
