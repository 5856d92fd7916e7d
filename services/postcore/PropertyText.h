#pragma once

#include "foundation/Result.h"
#include "services/postcore/Property.h"

namespace tavrin::postcore {

/// The value as text, on one line and the same in every language of the system: "3", "0.25",
/// "true", "1 0.5 0" (Vec3), "\"text\"" in quotes, and for arrays the elements separated by commas:
/// "1, 0.5", "1 1 1, 0.5 1 1", "1, 0" (BoolArray). Empty when undefined.
String getConfSerialization(const Property& property);

/// Reads that text as a value of the type. White space around values does not matter; a Bool may
/// also be 1 or 0, an element of a BoolArray true or false.
Result<Property> parseConfSerialization(PropertyType type, const String& text);

/// An array as it stands in an image's header: all its numbers separated by commas alone,
/// "1,1,1,0.5,1,1" for two Vec3. Other types, StringArray among them, have the text of
/// getConfSerialization.
String getAttributeText(const Property& property);

/// Reads that text as a value of the type. Any separator but a comma is a failure.
Result<Property> parseAttributeText(PropertyType type, const String& text);

}  // namespace tavrin::postcore
