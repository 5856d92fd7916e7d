#pragma once

#include "foundation/String.h"

namespace tavrin {
inline namespace foundation {
namespace Str {

/// Of a file name with its extension, in bytes of UTF-8.
inline constexpr std::size_t kLongestFilename = 255;

/// A text that any system accepts as the end of a file name: control characters and the characters
/// <>:"/\|?* become "_", as do trailing dots and spaces; an empty text becomes "_". What is longer
/// than `mostBytes` in UTF-8 is cut off.
String escapeFilename(const String& text, std::size_t mostBytes = kLongestFilename);

/// The text for a terminal: control characters but line ends, which could command it, become "?",
/// as do those that turn the direction of text around.
String escapeControls(const String& text);
/// The same for a text that is part of one line: line ends become "?" too.
String escapeLine(const String& text);
/// A name from a text in quotes, short enough for a message: what is longer than 40 characters ends
/// in an ellipsis.
String quote(const String& name);

/// The text with the letters A to Z in lower case; others stay.
String toLowerCase(const String& text);
/// The text with the letters a to z in upper case; others stay.
String toUpperCase(const String& text);

}  // namespace Str
}  // namespace foundation
}  // namespace tavrin
