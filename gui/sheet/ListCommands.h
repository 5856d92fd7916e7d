#pragma once

#include "foundation/data/GenericObject.h"

#include <cstddef>

namespace tavrin::sheet {

// What a user does with the items of a list. Indices are of items that are there.

/// A copy after the item, with an id of its own.
void duplicateItem(GenericList& list, std::size_t index);
/// All its properties as declared, but for its id and switch.
void resetItem(GenericList& list, std::size_t index);
/// So that it stands at `to` afterwards.
void moveItem(GenericList& list, std::size_t from, std::size_t to);
/// Back to where it was, as far as the list still reaches there.
void insertItem(GenericList& list, std::size_t index, const GenericObject& item);

}  // namespace tavrin::sheet
