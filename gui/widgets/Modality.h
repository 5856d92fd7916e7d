#pragma once

#include <wx/nonownedwnd.h>

namespace tavrin::widgets {

/// Lets a window that floats above a modal dialog have the mouse, which the dialog would otherwise
/// keep for itself. Main thread.
void standOutsideModality(wxNonOwnedWindow& window);

}  // namespace tavrin::widgets
