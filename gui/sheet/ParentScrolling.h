#pragma once

#include <wx/gdicmn.h>

class wxWindow;

namespace tavrin::sheet {

// What a window does with the scrolled window around it, if there is one. Main thread.

/// Scrolls by units; positive ones are to the left and up. Whether there is something that could be
/// scrolled.
bool scrollParent(const wxWindow& window, int unitsX, int unitsY);

/// Scrolls as far as needed to show a part of the window, in its client coordinates.
void scrollIntoView(const wxWindow& window, const wxRect& part);

}  // namespace tavrin::sheet
