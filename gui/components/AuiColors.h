#pragma once

#include <wx/colour.h>

namespace tavrin::components {

// Of the lines between docked things, around the skin's colour of surfaces.
inline const wxColour kAuiShadow(37, 37, 37);
inline const wxColour kAuiEdge(54, 54, 54);
inline const wxColour kAuiCaption(200, 200, 200);

}  // namespace tavrin::components
