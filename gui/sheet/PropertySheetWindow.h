#pragma once

#include "foundation/Function.h"
#include "foundation/SharedPtr.h"
#include "foundation/String.h"
#include "foundation/data/Entity.h"
#include "gui/sheet/IPropertySheetHost.h"

class wxWindow;

namespace tavrin::sheet {

/// What a window needs to have a property sheet in it.
struct PropertySheetOptions {
    SharedPtr<Entity> entity;  ///< whose first switch and first list are shown
    String title;
    String objectName;  ///< by which tools find the sheet
    SharedPtr<IPropertySheetHost> host;
    /// After the sheet or a part of it has been opened or closed; may be empty.
    Function<void(bool)> onCollapsibleStateChanged;
};

/// A window with a PropertySheet in it, for those who do not know Qt. Its best height follows what
/// is shown. Throws an Exception when the entity lacks a switch or a list. Main thread; a QtRuntime
/// must live.
wxWindow* createPropertySheetWindow(wxWindow* parent, const PropertySheetOptions& options);

}  // namespace tavrin::sheet
