// The classic sixteen colours, by number, a paler one, and two that letters are readable in.
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
  Mist = 16,
  WarningText = 17,
  FaintText = 18
};

inline QColor Colour(int ink) {
  static constexpr std::array<QRgb, 19> colours = {
      0x000000, 0x000080, 0x008000, 0x008080, 0x800000, 0x800080, 0x808000, 0xC0C0C0, 0x808080, 0x0000FF,
      0x00FF00, 0x00FFFF, 0xFF0000, 0xFF00FF, 0xFFFF00, 0xFFFFFF, 0xEAF1F4, 0xC00000, 0x595959};
  return QColor::fromRgb(colours.at(static_cast<size_t>(ink)));
}

}  // namespace Palette
