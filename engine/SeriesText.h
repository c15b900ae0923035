// Joins numbers into one of the engine's output texts.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string>
#include <string_view>
#include <type_traits>

#include "engine/Decimal.h"

namespace engine {

// Overwrites `text` with numbers of a fixed number of decimals, the delimiter between them. The text is whole
// once Finish has been called.
class SeriesText {
 public:
  // At most `count` numbers, none of them longer than `widest` is; a double that is not finite bounds none.
  template <class Number>
  SeriesText(std::string& text, std::string_view delimiter, int places, std::size_t count, Number widest)
      : text_(text), delimiter_(delimiter), places_(places) {
    if constexpr (std::is_same_v<Number, double>) {
      if (!std::isfinite(widest)) widest = std::numeric_limits<double>::lowest();
    }
    std::array<char, fixedRoom> buffer;
    const auto width = static_cast<std::size_t>(WriteFixed(buffer.data(), widest, places) - buffer.data()) +
                       1 + delimiter.size();  // 1 for a sign
    text_.resize(count * width + fixedRoom);
    out_ = text_.data();
  }

  template <class Number>
  void Add(Number number) {
    char* out = WriteFixed(out_, number, places_);
    for (const char c : delimiter_) *out++ = c;
    out_ = out;
  }

  // Takes the last delimiter off.
  void Finish() {
    const auto written = static_cast<std::size_t>(out_ - text_.data());
    text_.resize(written - std::min(written, delimiter_.size()));
  }

 private:
  std::string& text_;
  std::string_view delimiter_;
  int places_;
  char* out_;
};

}  // namespace engine
