#pragma once

#include "foundation/Optional.h"
#include "foundation/String.h"

#include <string_view>

namespace tavrin::postcore {

/// The text in double quotes, on one line and of characters that any UTF-8 file can hold: quotes
/// and backslashes have a backslash before them, line ends are \n and \r, other control characters
/// and lone surrogates \u and four hexadecimal digits.
String getQuotedText(const String& text);

/// Takes a quoted text off the front of `rest`. Nothing when there is none.
Optional<String> takeQuotedText(std::u16string_view& rest);

}  // namespace tavrin::postcore
