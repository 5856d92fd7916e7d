#include "foundation/NumberText.h"

#include <array>
#include <charconv>
#include <cmath>

namespace tavrin {
inline namespace foundation {
namespace Str {
namespace {

// Long enough for the digits of any number below kLongForm and any exponent.
using Digits = std::array<char, 48>;

template <class T, class... Format>
String print(T number, Format... format) {
    Digits digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number, format...);
    return String::fromUtf8({digits.data(), end.ptr});
}

template <class T>
Optional<T> parse(std::u16string_view text) {
    // No number of use is longer.
    constexpr std::size_t kLongest = 400;
    std::array<char, kLongest> ascii;
    if (text.size() > ascii.size()) {
        return {};
    }
    for (std::size_t i = 0; i < text.size(); ++i) {
        ascii[i] = text[i] < 0x80 ? static_cast<char>(text[i]) : '?';
    }
    T number{};
    const char* const end = ascii.data() + text.size();
    const auto read = std::from_chars(ascii.data(), end, number);
    return read.ec == std::errc() && read.ptr == end ? Optional<T>(number) : std::nullopt;
}

}  // namespace

String getNumberText(int number) {
    return print(number);
}

String getNumberText(float number) {
    if (std::isnan(number)) {
        return "nan";
    }
    // Between these, digits alone are easier to read than an exponent.
    constexpr float kShortForm = 1e-4f;
    constexpr float kLongForm = 1e9f;
    const float size = std::abs(number);
    const bool isPlain = size == 0.0f || (size >= kShortForm && size < kLongForm);
    return isPlain ? print(number, std::chars_format::fixed) : print(number);
}

Optional<int> parseInt(std::u16string_view text) {
    return parse<int>(text);
}

Optional<float> parseFloat(std::u16string_view text) {
    return parse<float>(text);
}

}  // namespace Str
}  // namespace foundation
}  // namespace tavrin
