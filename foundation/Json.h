#pragma once

#include "foundation/Result.h"
#include "foundation/String.h"

#include <nlohmann/json.hpp>

namespace tavrin {
inline namespace foundation {

/// JSON whose objects keep the order of their members.
using Json = nlohmann::ordered_json;

/// Parses text from outside: nesting deeper than 64 levels, two members of one name in an object
/// and anything that is not one JSON value are failures that say what or where; it never throws.
Result<Json> parseJson(const String& text);

/// One line of JSON text; lone surrogates have been replaced by U+FFFD.
String dumpJson(const Json& json);

Json toJson(const String& text);
/// The number with the shortest text that reads back as the float, so that 0.1f is written as 0.1.
/// Numbers that are not finite become null when they are written.
Json toJson(float number);
/// The text of a JSON string; the caller has checked is_string().
String toString(const Json& json);

}  // namespace foundation
}  // namespace tavrin
