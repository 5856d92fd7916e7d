#pragma once

class wxWindow;

namespace tavrin::widgets {

/// Lays out the windows around one whose best size has changed, up to the nearest that scrolls or
/// has a frame of its own.
void layOutAround(wxWindow& window);

}  // namespace tavrin::widgets
