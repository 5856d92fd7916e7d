#include "gui/sheet/ListCommands.h"

#include "foundation/data/UniqueIdGenerator.h"
#include "gui/sheet/ListItemData.h"

#include <algorithm>

namespace tavrin::sheet {
namespace {

auto at(GenericList& list, std::size_t index) {
    return list.begin() + static_cast<std::ptrdiff_t>(index);
}

}  // namespace

void duplicateItem(GenericList& list, std::size_t index) {
    GenericObject copy = list.at(index);
    if (ListItemData::find<int>(copy, ListItemData::kId) != nullptr) {
        copy.set(ListItemData::kId, UniqueIdGenerator::getInstance().getNext());
    }
    list.insert(at(list, index + 1), std::move(copy));
}

void resetItem(GenericList& list, std::size_t index) {
    GenericObject& item = list.at(index);
    for (const PropertyDefinition& property : item.getType().getProperties()) {
        const String& name = property.getName();
        if (name != ListItemData::kId && name != ListItemData::kEnabled) {
            item.setValue(name, property.makeDefault());
        }
    }
}

void moveItem(GenericList& list, std::size_t from, std::size_t to) {
    if (from < to) {
        std::rotate(at(list, from), at(list, from + 1), at(list, to + 1));
    } else {
        std::rotate(at(list, to), at(list, from), at(list, from + 1));
    }
}

void insertItem(GenericList& list, std::size_t index, const GenericObject& item) {
    list.insert(at(list, std::min(index, list.size())), item);
}

}  // namespace tavrin::sheet
