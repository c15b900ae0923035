#include "engine/Parse.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "engine/Decimal.h"
#include "engine/Engine.h"
#include "engine/Pattern.h"

namespace engine {

namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

bool IsDigit(char c) { return static_cast<unsigned char>(c - '0') < 10; }

std::string_view Trim(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsBlank(text.back())) text.remove_suffix(1);
  return text;
}

// The parts of a decimal number: sign, digits with the point taken out, and the power of ten of the last
// digit.
struct DecimalText {
  bool negative = false;
  std::string_view whole;
  std::string_view fraction;
  long exponent = 0;  // as written behind the E
};

std::optional<DecimalText> Dissect(std::string_view element) {
  DecimalText parts;
  std::size_t i = 0;
  if (i < element.size() && (element[i] == '+' || element[i] == '-')) parts.negative = element[i++] == '-';
  auto digits = [&] {
    const std::size_t start = i;
    while (i < element.size() && IsDigit(element[i])) ++i;
    return element.substr(start, i - start);
  };
  parts.whole = digits();
  if (i < element.size() && element[i] == '.') {
    ++i;
    parts.fraction = digits();
  }
  if (parts.whole.empty() && parts.fraction.empty()) return std::nullopt;
  if (i < element.size() && (element[i] == 'e' || element[i] == 'E')) {
    ++i;
    bool negative = false;
    if (i < element.size() && (element[i] == '+' || element[i] == '-')) negative = element[i++] == '-';
    const std::string_view power = digits();
    if (power.empty()) return std::nullopt;
    // Anything beyond six digits is as good as a million.
    for (const char c : power) parts.exponent = std::min(parts.exponent * 10 + (c - '0'), 1'000'000L);
    if (negative) parts.exponent = -parts.exponent;
  }
  if (i != element.size()) return std::nullopt;
  return parts;
}

// The nearest double; nothing where it overflows. Below the smallest double it is 0.
std::optional<double> NearestDouble(std::string_view element, const DecimalText& parts) {
  if (element.front() == '+') element.remove_prefix(1);
  double value = 0;
  const auto end = std::from_chars(element.data(), element.data() + element.size(), value);
  if (end.ec == std::errc{}) return value;
  // Out of range: too large or too small? The power of ten of the first significant digit tells.
  const std::size_t zeros = std::min(parts.whole.find_first_not_of('0'), parts.whole.size());
  long power = static_cast<long>(parts.whole.size() - zeros) + parts.exponent;
  if (zeros == parts.whole.size()) {
    power -= static_cast<long>(std::min(parts.fraction.find_first_not_of('0'), parts.fraction.size()));
  }
  if (power > 0) return std::nullopt;
  return parts.negative ? -0.0 : 0.0;
}

// The number as mantissa / 10^decimals with no more than 18 digits and from 0 to maximumDecimals decimals.
std::optional<ScaledInteger> ExactDecimal(const DecimalText& parts) {
  std::string_view fraction = parts.fraction;
  if (parts.exponent <= 0) {
    while (!fraction.empty() && fraction.back() == '0') fraction.remove_suffix(1);
  }
  std::int64_t mantissa = 0;
  int count = 0;
  for (const std::string_view run : {parts.whole, fraction}) {
    for (const char c : run) {
      if (mantissa == 0 && c == '0') continue;
      if (++count > 18) return std::nullopt;
      mantissa = mantissa * 10 + (c - '0');
    }
  }
  if (mantissa == 0) return ScaledInteger{};
  long decimals = static_cast<long>(fraction.size()) - parts.exponent;
  for (; decimals < 0; ++decimals) {
    if (++count > 18) return std::nullopt;
    mantissa *= 10;
  }
  while (decimals > 0 && mantissa % 10 == 0) {
    mantissa /= 10;
    --decimals;
  }
  if (decimals > maximumDecimals) return std::nullopt;
  return ScaledInteger{parts.negative ? -mantissa : mantissa, static_cast<int>(decimals)};
}

bool StartsWith(const char* p, const char* end, std::string_view delimiter) {
  if (delimiter.empty() || *p != delimiter.front()) return false;
  return delimiter.size() == 1 ||
         std::string_view(p, static_cast<std::size_t>(end - p)).starts_with(delimiter);
}

// The usual element: sign, digits, perhaps a point and more digits, 18 at most, right up to `end` or to a
// delimiter. Returns where it ends, or null where the element is anything else.
const char* ParsePlain(const char* p, const char* end, std::string_view delimiter, ScaledInteger& number) {
  bool negative = false;
  if (*p == '-') {
    negative = true;
    ++p;
  }
  const char* const start = p;
  std::uint64_t mantissa = 0;
  while (p != end && IsDigit(*p)) mantissa = mantissa * 10 + static_cast<std::uint64_t>(*p++ - '0');
  auto digits = p - start;
  number.decimals = 0;
  if (p != end && *p == '.') {
    const char* const point = p++;
    while (p != end && IsDigit(*p)) mantissa = mantissa * 10 + static_cast<std::uint64_t>(*p++ - '0');
    digits += p - point - 1;
    number.decimals = static_cast<int>(std::min<std::ptrdiff_t>(p - point - 1, 100));
  }
  if (digits == 0 || digits > 18) return nullptr;
  if (p != end && !StartsWith(p, end, delimiter)) return nullptr;
  number.mantissa = negative ? -static_cast<std::int64_t>(mantissa) : static_cast<std::int64_t>(mantissa);
  return p;
}

std::string NotANumber(std::size_t position, std::string_view element) {
  constexpr std::size_t longest = 60;
  std::string shown(element.substr(0, longest));
  if (element.size() > longest) {
    while (!shown.empty() && (static_cast<unsigned char>(shown.back()) & 0xC0) == 0x80) shown.pop_back();
    if (!shown.empty() && (static_cast<unsigned char>(shown.back()) & 0x80)) shown.pop_back();
    shown += "...";
  }
  return "value " + std::to_string(position) + " (\"" + shown + "\") is not a number";
}

// Where the delimiter stands, or else the end.
std::size_t Find(std::string_view text, std::string_view delimiter) {
  return delimiter.empty() ? text.size() : std::min(text.find(delimiter), text.size());
}

bool TooMany(std::string& error) {
  error = "there are more than " + std::to_string(maximumSamples) + " samples";
  return false;
}

// Collects numbers as scaled integers of the most decimals that any of them has.
class Collector {
 public:
  // At most `most` numbers.
  Collector(Samples& samples, std::size_t most) : samples_(samples) {
    if (samples_.mantissas.size() < most) samples_.mantissas.resize(most);
    next_ = samples_.mantissas.data();
    end_ = next_ + most;
  }

  void Add(ScaledInteger number) {
    if (number.decimals != samples_.decimals) Align(number);
    *next_++ = number.mantissa;
  }

  // Adds what stands from `p` on, as long as it is written like the plain element read before. Returns where
  // that ends.
  const char* AddAlike(std::string_view element, int decimals, const char* p, const char* end) {
    if (decimals != samples_.decimals || element.size() > Pattern::longest) return p;
    return Pattern(element, decimals, p[-1]).Read(p, end, next_, end_);
  }

  std::size_t Count() const { return static_cast<std::size_t>(next_ - samples_.mantissas.data()); }

 private:
  void Align(ScaledInteger& number) {
    bool fits = number.decimals <= maximumDecimals;
    if (fits && number.decimals < samples_.decimals) {
      fits = Rescale(number.mantissa, samples_.decimals - number.decimals);
    } else if (fits) {
      const int more = number.decimals - samples_.decimals;
      for (std::int64_t* p = samples_.mantissas.data(); p != next_; ++p) fits = fits && Rescale(*p, more);
      samples_.decimals = number.decimals;
    }
    if (!fits) samples_.exact = false;
  }

  Samples& samples_;
  std::int64_t* next_;
  std::int64_t* end_;
};

// Any element; false where it is not a number. One that does not fit into a scaled integer makes exact false.
bool ParseAny(std::string_view element, ScaledInteger& number, bool& exact) {
  const std::optional<DecimalText> parts = Dissect(element);
  if (!parts || !NearestDouble(element, *parts)) return false;
  const std::optional<ScaledInteger> decimal = ExactDecimal(*parts);
  exact = exact && decimal;
  number = decimal.value_or(ScaledInteger{});
  return true;
}

// The scaled integers; false with an error text, or with samples.exact false where the texts do not fit into
// them.
bool ParseExact(std::string_view text, std::string_view delimiter, Samples& samples, std::string& error) {
  const char* p = text.data();
  const char* const end = p + text.size();
  // A delimiter that a number may hold cuts through what ParsePlain would take for one.
  const bool canBePlain =
      delimiter.empty() || !(IsDigit(delimiter[0]) || delimiter[0] == '.' || delimiter[0] == '-');
  constexpr std::size_t most = maximumSamples;
  Collector collector(samples, std::min(text.size() / 2 + 1, most));
  while (p < end) {
    const std::string_view rest(p, static_cast<std::size_t>(end - p));
    ScaledInteger number;
    const char* next = canBePlain ? ParsePlain(p, end, delimiter, number) : nullptr;
    const bool plain = next != nullptr;
    const std::size_t at = plain ? static_cast<std::size_t>(next - p) : Find(rest, delimiter);
    const std::string_view element = plain ? rest.substr(0, at) : Trim(rest.substr(0, at));
    p = at == rest.size() ? end : p + at + delimiter.size();
    if (element.empty()) continue;
    if (!plain && !ParseAny(element, number, samples.exact)) {
      error = NotANumber(collector.Count() + 1, element);
      return false;
    }
    if (collector.Count() == most) return TooMany(error);
    collector.Add(number);
    if (plain && delimiter.size() == 1) p = collector.AddAlike(element, number.decimals, p, end);
  }
  samples.count = collector.Count();
  return true;
}

int DecimalsOf(const DecimalText& parts) {
  const std::size_t last = parts.fraction.find_last_not_of('0');
  long decimals = 0;
  if (last != parts.fraction.npos) {
    decimals = static_cast<long>(last) + 1;
  } else if (const std::size_t digit = parts.whole.find_last_not_of('0'); digit != parts.whole.npos) {
    decimals = static_cast<long>(digit) + 1 - static_cast<long>(parts.whole.size());
  } else {
    return 0;
  }
  return static_cast<int>(std::max(decimals - parts.exponent, 0L));
}

// The same elements as doubles.
void ParseDoubles(std::string_view text, std::string_view delimiter, Samples& samples) {
  samples.decimals = 0;
  while (!text.empty()) {
    const std::size_t at = Find(text, delimiter);
    const std::string_view element = Trim(text.substr(0, at));
    if (!element.empty()) {
      const DecimalText parts = *Dissect(element);
      samples.values.push_back(NearestDouble(element, parts).value());
      samples.decimals = std::max(samples.decimals, DecimalsOf(parts));
    }
    text.remove_prefix(std::min(at + delimiter.size(), text.size()));
  }
}

}  // namespace

int DecimalsNeeded(const Samples& samples) {
  if (!samples.exact) return samples.decimals;
  // Mostly the first sample has a last digit.
  int most = samples.decimals;
  for (std::int64_t power = 10; most > 0 && power <= largestMantissa / 10; power *= 10, --most) {
    const auto end = samples.mantissas.begin() + static_cast<std::ptrdiff_t>(samples.count);
    if (std::any_of(samples.mantissas.begin(), end,
                    [=](std::int64_t mantissa) { return mantissa % power != 0; })) {
      return most;
    }
  }
  return samples.count == 0 || most <= 0 ? 0 : most;
}

Reading ReadDecimal(std::string_view element, double& value) {
  element = Trim(element);
  const std::optional<DecimalText> parts = Dissect(element);
  if (!parts) return Reading::NoNumber;
  const std::optional<double> nearest = NearestDouble(element, *parts);
  if (!nearest) return Reading::TooLarge;
  value = *nearest;
  return Reading::Number;
}

bool ParseSamples(std::string_view text, std::string_view delimiter, bool reverse, Samples& samples,
                  std::string& error) {
  samples.exact = true;
  samples.decimals = 0;
  samples.values.clear();
  if (!ParseExact(text, delimiter, samples, error)) return false;
  if (!samples.exact) ParseDoubles(text, delimiter, samples);
  if (reverse) {
    std::reverse(samples.mantissas.begin(),
                 samples.mantissas.begin() + static_cast<std::ptrdiff_t>(samples.count));
    std::reverse(samples.values.begin(), samples.values.end());
  }
  return true;
}

}  // namespace engine
