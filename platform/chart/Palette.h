// The classic sixteen colours, by number, and a paler one.
#pragma once

#include <QColor>
#include <array>

namespace Palette {

enum Ink {
  Black = 0,
  Green = 2,
  Teal = 3,
  LightGrey = 7,
  Grey = 8,
  Blue = 9,
  Red = 12,
  Yellow = 14,
  White = 15,
  Mist = 16
};

inline QColor Colour(int ink) {
  static constexpr std::array<QRgb, 17> colours = {0x000000, 0x000080, 0x008000, 0x008080, 0x800000, 0x800080,
                                                   0x808000, 0xC0C0C0, 0x808080, 0x0000FF, 0x00FF00, 0x00FFFF,
                                                   0xFF0000, 0xFF00FF, 0xFFFF00, 0xFFFFFF, 0xEAF1F4};
  return QColor::fromRgb(colours.at(static_cast<size_t>(ink)));
}

}  // namespace Palette
