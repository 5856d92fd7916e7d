#pragma once

#include "foundation/CallbackLifetime.h"
#include "foundation/Function.h"

#include <wx/nonownedwnd.h>

namespace tavrin::widgets {

/// Lets a window that floats above a modal dialog have the mouse, which the dialog would otherwise
/// keep for itself. Main thread.
void standOutsideModality(wxNonOwnedWindow& window);

/// Calls the function when, while the dialog is modal, another window of the program is clicked.
/// The dialog outlives the registration. Main thread.
CallbackLifetime callOnClickOutside(wxNonOwnedWindow& dialog, Function<void()> function);

}  // namespace tavrin::widgets
