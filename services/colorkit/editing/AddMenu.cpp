#include "services/colorkit/editing/AddMenu.h"

#include "foundation/data/TypeDatabase.h"
#include "foundation/data/UniqueIdGenerator.h"
#include "services/colorkit/ColorMappingOperatorFactory.h"
#include "services/colorkit/DefaultLut.h"
#include "services/colorkit/InternalError.h"
#include "services/colorkit/UnaryColorMappingOperator.h"
#include "services/colorkit/editing/OperatorList.h"
#include "services/colorkit/operators/LutOperator.h"

#include <array>
#include <cstddef>
#include <utility>

namespace tavrin::colorkit {
namespace {

using Menu = std::vector<UiListItemAdder::AddMenuItem>;

// By OperatorCategory, without those that are not offered.
constexpr std::array kHeadings = {"Basic", "Curve Control", "Highlight Control", "Final Look"};

void addOperator(const String& typeName, GenericList& list) {
    GenericObject object = GenericObject::construct(typeName);
    object.set(UnaryColorMappingOperator::Data::kId, UniqueIdGenerator::getInstance().getNext());
    if (typeName == LutOperator::kDescriptor.typeName) {
        object.set(LutOperator::kPath.name, getDefaultLut());
    }
    applyOverride(object);
    list.push_back(std::move(object));
}

String getDescription(const String& typeName) {
    const auto type = TypeDatabase::find(typeName);
    const auto* text =
        type ? type->getAttributes().get<String>(UiAttributes::kDescription) : nullptr;
    return text == nullptr ? String() : *text;
}

}  // namespace

Menu createAddItemMenuContent() {
    return createAddItemMenuContent(ColorMappingOperatorFactory::getInstance().getAllDescriptors());
}

Menu createAddItemMenuContent(
    const std::map<String, const ColorMappingOperatorDescriptor*>& descriptors) {
    std::array<Menu, kHeadings.size()> buckets;
    for (const auto& [typeName, descriptor] : descriptors) {
        if (descriptor->category == OperatorCategory::NotOffered) {
            continue;
        }
        const auto category = static_cast<std::size_t>(descriptor->category);
        if (category >= buckets.size()) {
            throw InternalError("The operator \"" + typeName + "\" has an unknown category.");
        }
        const auto add = [name = typeName](GenericList& list) { addOperator(name, list); };
        buckets[category].push_back(
            {descriptor->displayName, add, getDescription(typeName), false});
    }
    Menu menu;
    for (std::size_t category = 0; category < buckets.size(); ++category) {
        const Menu& items = buckets[category];
        if (!items.empty()) {
            menu.push_back({kHeadings[category], {}, {}, true});
            menu.insert(menu.end(), items.begin(), items.end());
        }
    }
    return menu;
}

}  // namespace tavrin::colorkit
