// Joins numbers into one of the engine's output texts.
#pragma once

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
    text_.resize(fixedRoom);
    const char* const end = WriteFixed(text_.data(), widest, places);
    const std::size_t width =
        static_cast<std::size_t>(end - text_.data()) + 1 + delimiter.size();  // 1 for a sign
    text_.resize(count * width + fixedRoom);
    out_ = text_.data();
  }

  template <class Number>
  void Add(Number number) {
    if (out_ != text_.data()) {
      for (const char c : delimiter_) *out_++ = c;
    }
    out_ = WriteFixed(out_, number, places_);
  }

  void Finish() { text_.resize(static_cast<std::size_t>(out_ - text_.data())); }

 private:
  std::string& text_;
  std::string_view delimiter_;
  int places_;
  char* out_;
};

}  // namespace engine
