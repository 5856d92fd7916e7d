#include "foundation/data/PropertyDefinition.h"

#include "foundation/Exception.h"

namespace tavrin {
inline namespace foundation {

void PropertyDefinition::check(const Value& value, const String& typeName) const {
    const String subject = "The property \"" + name_ + "\" of \"" + typeName + "\" ";
    if (!hasType_(value)) {
        throw Exception(subject + "cannot hold a value of this type.");
    }
    if (limit_ && !limit_->isAllowed(value)) {
        throw Exception(subject + "must be " + limit_->requirement + ".");
    }
}

}  // namespace foundation
}  // namespace tavrin
