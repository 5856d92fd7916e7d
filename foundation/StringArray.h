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

}  // namespace Str
}  // namespace foundation
}  // namespace tavrin
