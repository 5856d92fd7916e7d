#pragma once

#include "foundation/Result.h"
#include "foundation/String.h"

#include <vector>

namespace tavrin {
inline namespace foundation {
namespace Str {

/// A list of texts as one text that parseExportStringArray reads back item for item: each item in
/// double quotes, with a backslash before quotes and backslashes, separated by commas.
String getExportStringArray(const std::vector<String>& items);

/// Reads the exported form. Items may also stand unquoted up to the next white space. Text after
/// the last item is ignored. An item whose closing quote is missing is a failure with the text
/// "Incorrectly escaped string".
Result<std::vector<String>> parseExportStringArray(const String& text);

/// A text that any system accepts as the end of a file name: control characters and the characters
/// <>:"/\|?* become "_", as do trailing dots and spaces; an empty text becomes "_".
String escapeFilename(const String& text);

/// The text for a terminal: control characters but line ends, which could command it, become "?".
String escapeControls(const String& text);

}  // namespace Str
}  // namespace foundation
}  // namespace tavrin
