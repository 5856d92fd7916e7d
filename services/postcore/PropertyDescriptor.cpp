#include "services/postcore/PropertyDescriptor.h"

#include "foundation/Text.h"
#include "services/postcore/PropertyTable.h"
#include "services/postcore/PropertyText.h"

#include <algorithm>

namespace tavrin::postcore {
namespace {

template <class T>
bool isOutside(const PropertyDescriptor& descriptor, const Property& value) {
    return descriptor.minimum.get<T>() > value.get<T>() ||
           value.get<T>() > descriptor.maximum.get<T>();
}

}  // namespace

const std::vector<PropertyDescriptor>& PropertyDescriptor::list() {
    static const std::vector<PropertyDescriptor> descriptors = [] {
        auto table = makePropertyTable();
        std::ranges::sort(table, {}, &PropertyDescriptor::id);
        return table;
    }();
    return descriptors;
}

const PropertyDescriptor* PropertyDescriptor::get(int id) {
    const auto found = std::ranges::lower_bound(list(), id, {}, &PropertyDescriptor::id);
    return found != list().end() && found->id == id ? &*found : nullptr;
}

const PropertyDescriptor* PropertyDescriptor::find(const String& name) {
    const auto found = std::ranges::find(list(), name, &PropertyDescriptor::name);
    return found != list().end() ? &*found : nullptr;
}

Result<void> PropertyDescriptor::check(const Property& value) const {
    if (value.getType() != type) {
        return Failure("Value has wrong type.");
    }
    if ((type == PropertyType::Int && isOutside<int>(*this, value)) ||
        (type == PropertyType::Float && isOutside<float>(*this, value))) {
        return Failure("Value is expected to be between " + getConfSerialization(minimum) +
                       " and " + getConfSerialization(maximum) + ".");
    }
    return {};
}

Result<Property> parseProperty(const PropertyDescriptor& descriptor, const String& text) {
    for (const PropertyChoice& choice : descriptor.choices) {
        if (Str::toLowerCase(choice.name) == Str::toLowerCase(text.trimmed())) {
            return Property(choice.value);
        }
    }
    Result<Property> value = parseConfSerialization(descriptor.type, text);
    const Result<void> check =
        value ? descriptor.check(*value) : Result<void>(Failure(value.error()));
    if (!check) {
        return Failure("Property " + descriptor.name + " is invalid. " + check.error());
    }
    return value;
}

String getPropertyExrName(const PropertyDescriptor& descriptor) {
    return "tavrin.post." + descriptor.name;
}

}  // namespace tavrin::postcore
