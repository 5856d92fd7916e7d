#include "gui/widgets/ZoomableScrollable.h"

#include <wx/utils.h>

namespace tavrin::widgets {

void ZoomableScrollable::bindScrollAndZoomEvents(wxWindow* window) {
    window->Bind(wxEVT_MOUSEWHEEL, [this, window](wxMouseEvent& event) {
        // An event that has left a window in this one still has that one's coordinates.
        wxMouseEvent own(event);
        own.SetPosition(window->ScreenToClient(wxGetMousePosition()));
        onWheel(own);
    });
}

void ZoomableScrollable::onWheel(wxMouseEvent& event) {
    if (event.GetWheelAxis() == wxMOUSE_WHEEL_HORIZONTAL) {
        // wxWidgets counts to the right.
        event.m_wheelRotation = -event.m_wheelRotation;
        scrollByWheel(event);
        return;
    }
    if (event.ShiftDown()) {
        event.m_wheelAxis = wxMOUSE_WHEEL_HORIZONTAL;
    }
    if (event.ShiftDown() || event.ControlDown()) {
        scrollByWheel(event);
        return;
    }
    const int steps = steps_.take(event);
    if (steps != 0) {
        zoomByWheel(event, steps);
    }
}

}  // namespace tavrin::widgets
