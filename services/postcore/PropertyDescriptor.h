#pragma once

#include "foundation/Result.h"
#include "services/postcore/Property.h"

#include <vector>

namespace tavrin::postcore {

/// A value of an Int that has a name of its own.
struct PropertyChoice {
    int value;
    String name;  ///< without spaces; never changes
};

/// What there is to know of a post-processing parameter. There is one constant of each. Any thread.
struct PropertyDescriptor {
    int id;
    String name;  ///< in settings files and headers; unique, without spaces; never changes
    PropertyType type;
    Property defaultValue;
    Property minimum;                          ///< of an Int or Float, otherwise Undefined
    Property maximum;                          ///< of an Int or Float, otherwise Undefined
    std::vector<PropertyChoice> choices = {};  ///< of an Int that selects one of several things

    /// The descriptor with the id, or null.
    static const PropertyDescriptor* get(int id);
    /// The descriptor with the name, or null.
    static const PropertyDescriptor* find(const String& name);
    /// All of them, by id.
    static const std::vector<PropertyDescriptor>& list();

    /// Whether the value has the type and lies in the range, or one sentence on why not. A NaN lies
    /// in every range.
    Result<void> check(const Property& value) const;
};

/// Reads the text form of getConfSerialization, or the name of a choice in upper or lower case, as
/// a value of the property. The sentence of a failure names the property.
Result<Property> parseProperty(const PropertyDescriptor& descriptor, const String& text);

/// The name of the header attribute that holds the property in an image.
String getPropertyExrName(const PropertyDescriptor& descriptor);

}  // namespace tavrin::postcore
