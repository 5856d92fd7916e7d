#pragma once

#include "gui/widgets/WheelSteps.h"

#include <wx/window.h>

namespace tavrin::widgets {

/// What is zoomed and scrolled by the mouse wheel. The plain wheel zooms; with Control or Shift it
/// scrolls up and down or to the sides, as a wheel that turns to the side does by itself.
class ZoomableScrollable {
public:
    virtual ~ZoomableScrollable() = default;

    /// The event's axis says what is scrolled; its rotation is positive towards the top or the
    /// left, 120 for one notch of a plain wheel.
    virtual void scrollByWheel(const wxMouseEvent& event) = 0;
    /// Positive steps zoom in; one step is one notch. The event's position is where the pointer is,
    /// in client coordinates of the bound window.
    virtual void zoomByWheel(const wxMouseEvent& event, int steps) = 0;

protected:
    /// Takes the wheel events of a window and of those in it that leave them. The window does not
    /// outlive this object, of which it usually is a base. Main thread.
    void bindScrollAndZoomEvents(wxWindow* window);

private:
    void onWheel(wxMouseEvent& event);

    WheelSteps steps_;
};

}  // namespace tavrin::widgets
