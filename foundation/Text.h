#pragma once

#include "foundation/String.h"

namespace tavrin {
inline namespace foundation {
namespace Str {

/// A text that any system accepts as the end of a file name: control characters and the characters
/// <>:"/\|?* become "_", as do trailing dots and spaces; an empty text becomes "_".
String escapeFilename(const String& text);

/// The text for a terminal: control characters but line ends, which could command it, become "?".
String escapeControls(const String& text);

/// The text with the letters A to Z in lower case; others stay.
String toLowerCase(const String& text);

}  // namespace Str
}  // namespace foundation
}  // namespace tavrin
