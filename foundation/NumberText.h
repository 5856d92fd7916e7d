#pragma once

#include "foundation/Optional.h"
#include "foundation/String.h"

#include <string_view>

namespace tavrin {
inline namespace foundation {
namespace Str {

/// Decimal digits, with a minus sign where needed.
String getNumberText(int number);
/// The shortest text that parseFloat reads back as the same float: "0.1", "100", "1e-20", "inf",
/// "-inf", "nan" (for every NaN). The same in every language of the system.
String getNumberText(float number);

/// The whole text as a number in decimal digits; nothing for any other text and for numbers that
/// the type cannot hold.
Optional<int> parseInt(std::u16string_view text);
/// Reads "inf", "infinity" and "nan" in any case too.
Optional<float> parseFloat(std::u16string_view text);

}  // namespace Str
}  // namespace foundation
}  // namespace tavrin
