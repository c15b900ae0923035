// Reads runs of numbers that are written alike, eight characters at a time.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace engine {

// How an element is written: where its sign, its point and the delimiter behind it stand. Most elements of a
// data set are written like the one before, and such a one is read without looking for any of these.
class Pattern {
 public:
  static constexpr std::size_t longest = 7;  // characters of an element; the delimiter is the eighth

  // Of a plain element: perhaps "-", digits, perhaps "." and `decimals` digits.
  Pattern(std::string_view element, int decimals, char delimiter)
      : stride_(static_cast<int>(element.size()) + 1) {
    const int length = stride_ - 1;
    const int first = element.front() == '-' ? 1 : 0;
    const int point = static_cast<int>(std::min(element.find('.'), element.size()));
    whole_ = Bytes(first, point);
    fraction_ = Bytes(point + 1, length);
    marks_ = Bytes(0, stride_) & ~(whole_ | fraction_);
    char text[span] = {};
    text[element.copy(text, longest)] = delimiter;
    expected_ = Load(text) & marks_;
    wholeShift_ = 8 * (span - point - decimals);
    fractionShift_ = 8 * (span - length);
    sign_ = -first;
  }

  // Writes the mantissas of the elements that stand from `p` on, each with its delimiter, as long as they are
  // written like this and there is room before outEnd. Returns where they end; `out` goes on with them.
  const char* Read(const char* p, const char* end, std::int64_t*& out, const std::int64_t* outEnd) const {
    const Pattern pattern = *this;  // in registers: what is written cannot change it
    const std::ptrdiff_t most = end - p < span ? 0 : std::min((end - p - span) / stride_ + 1, outEnd - out);
    std::int64_t* to = out;
    for (std::int64_t* const last = to + most; to != last && pattern.ReadOne(p, *to); ++to) p += stride_;
    out = to;
    return p;
  }

 private:
  bool ReadOne(const char* p, std::int64_t& mantissa) const {
    const Eight text = Load(p);
    if ((((text ^ expected_) & marks_) | (NotDigits(text) & (whole_ | fraction_))) != 0) return false;
    const Eight digits = text ^ InEveryByte('0');
    const auto number = static_cast<std::int64_t>(
        JoinDigits((digits & whole_) << wholeShift_ | (digits & fraction_) << fractionShift_));
    mantissa = (number ^ sign_) - sign_;
    return true;
  }

  using Eight = std::uint64_t;  // eight characters, the first of them in the lowest byte
  static constexpr int span = 8;

  static constexpr Eight InEveryByte(unsigned char byte) { return ~Eight{0} / 0xFF * byte; }

  // The bytes from `first` to the one before `last`.
  static Eight Bytes(int first, int last) {
    return first < last ? ~Eight{0} >> 8 * (span - (last - first)) << 8 * first : 0;
  }

  static Eight Load(const char* p) {
    Eight text = 0;
    for (int i = 0; i < span; ++i) text |= Eight{static_cast<unsigned char>(p[i])} << 8 * i;
    return text;
  }

  // The highest bit of every byte that is no digit; true up to and with the first one that is none.
  static Eight NotDigits(Eight text) {
    const Eight numbers = text ^ InEveryByte('0');
    return ((numbers + InEveryByte(0x80 - 10)) | numbers) & InEveryByte(0x80);
  }

  // The number that eight digits make, the last in the highest byte: neighbours are joined to pairs, pairs to
  // fours, fours to eights.
  static Eight JoinDigits(Eight digits) {
    digits = digits * 10 + (digits >> 8);
    constexpr Eight pairs = 0x000000FF'000000FF;
    constexpr Eight high = 100 + (1'000'000ULL << 32);
    constexpr Eight low = 1 + (10'000ULL << 32);
    return ((digits & pairs) * high + (digits >> 16 & pairs) * low) >> 32;
  }

  int stride_;
  int wholeShift_;  // brings the last digit before the point to its place
  int fractionShift_;
  Eight whole_;        // the bytes of the digits before the point
  Eight fraction_;     // those behind it
  Eight marks_;        // those of sign, point and delimiter
  Eight expected_;     // what stands there
  std::int64_t sign_;  // -1: negative
};

}  // namespace engine
