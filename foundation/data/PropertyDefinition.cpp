#include "foundation/data/PropertyDefinition.h"

#include "foundation/Exception.h"

namespace tavrin {
inline namespace foundation {

void PropertyDefinition::check(const Value& value, const String& typeName) const {
    const auto fail = [&](const String& what) {
        throw Exception("The property \"" + name_ + "\" of \"" + typeName + "\" " + what + ".");
    };
    if (!hasType_(value)) {
        fail("cannot hold a value of this type");
    }
    if (limit_ && !limit_->isAllowed(value)) {
        fail("must be " + limit_->requirement);
    }
}

}  // namespace foundation
}  // namespace tavrin
