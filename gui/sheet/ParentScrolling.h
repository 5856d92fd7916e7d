#pragma once

#include <wx/gdicmn.h>

#include <limits>

class wxWindow;

namespace tavrin::sheet {

// What a window does with the scrolled window around it, if there is one. Main thread.

/// Scrolls by units; positive ones are to the left and up. Whether there is something that could be
/// scrolled.
bool scrollParent(const wxWindow& window, int unitsX, int unitsY);

/// Scrolls as far as needed to show a part of the window, in its client coordinates, but at most
/// by so many pixels.
void scrollIntoView(const wxWindow& window, const wxRect& part,
                    int most = std::numeric_limits<int>::max());

}  // namespace tavrin::sheet
