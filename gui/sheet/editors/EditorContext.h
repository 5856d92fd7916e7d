#pragma once

#include "foundation/Function.h"

namespace tavrin::sheet {

class IPropertySheetHost;

/// Where an editor stands.
struct EditorContext {
    IPropertySheetHost& host;   ///< must outlive the editor
    Function<int()> getItemId;  ///< of the list item that has the property
};

}  // namespace tavrin::sheet
