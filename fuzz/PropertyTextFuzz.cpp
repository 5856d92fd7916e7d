// Texts of single values: the first byte chooses the type. What is read survives being written.

#include "foundation/FatalError.h"
#include "services/postcore/PropertyText.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>

namespace tavrin::postcore {
namespace {

constexpr PropertyType kTypes[] = {
    PropertyType::Int,        PropertyType::Float,       PropertyType::Bool,
    PropertyType::Vec3,       PropertyType::String,      PropertyType::Vec3Array,
    PropertyType::FloatArray, PropertyType::Vec2Array,   PropertyType::IntArray,
    PropertyType::BoolArray,  PropertyType::StringArray,
};

void checkText(PropertyType type, const String& text) {
    if (const auto value = parseConfSerialization(type, text)) {
        const auto again = parseConfSerialization(type, getConfSerialization(*value));
        if (!again || !(*again == *value)) {
            fatalError("A value that was written is read as another one.");
        }
    }
    if (const auto value = parseAttributeText(type, text)) {
        const auto again = parseAttributeText(type, getAttributeText(*value));
        if (!again || !(*again == *value)) {
            fatalError("A header value that was written is read as another one.");
        }
    }
}

}  // namespace
}  // namespace tavrin::postcore

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tavrin;
    if (size == 0) {
        return 0;
    }
    const std::string_view bytes(reinterpret_cast<const char*>(data + 1), size - 1);
    postcore::checkText(postcore::kTypes[data[0] % std::size(postcore::kTypes)],
                        String::fromUtf8(bytes));
    return 0;
}
