#pragma once

#include "foundation/String.h"
#include "foundation/data/UiAttributes.h"
#include "services/colorkit/ColorMappingOperatorDescriptor.h"

#include <map>
#include <vector>

namespace tavrin::colorkit {

/// The menu for adding one of the factory's operators to the end of the model's list: for each
/// category that has some, a heading and its operators in the order of their type names. The types
/// must be registered.
std::vector<UiListItemAdder::AddMenuItem> createAddItemMenuContent();

/// The same for these operators by type name. Throws an InternalError when a category is unknown.
std::vector<UiListItemAdder::AddMenuItem> createAddItemMenuContent(
    const std::map<String, const ColorMappingOperatorDescriptor*>& descriptors);

}  // namespace tavrin::colorkit
