#pragma once

#include <wx/event.h>

namespace tavrin::widgets {

/// Counts the whole notches of a wheel; fine wheels and touch pads send parts of them.
class WheelSteps {
public:
    /// The notches that this event completes, positive away from the user.
    int take(const wxMouseEvent& event) {
        if ((turned_ > 0) != (event.GetWheelRotation() > 0)) {
            turned_ = 0;
        }
        turned_ += event.GetWheelRotation();
        const int steps = turned_ / event.GetWheelDelta();
        turned_ -= steps * event.GetWheelDelta();
        return steps;
    }

private:
    int turned_ = 0;  // since the last whole notch
};

}  // namespace tavrin::widgets
