#pragma once

#include <wx/event.h>

namespace tavrin::widgets {

/// Counts the whole notches of a wheel; fine wheels and touch pads send parts of them.
class WheelSteps {
public:
    /// The notches that this turn completes, positive away from the user; `notch` is how much of
    /// the same unit makes one.
    int take(int rotation, int notch) {
        if ((turned_ > 0) != (rotation > 0)) {
            turned_ = 0;
        }
        turned_ += rotation;
        const int steps = turned_ / notch;
        turned_ -= steps * notch;
        return steps;
    }
    int take(const wxMouseEvent& event) {
        return take(event.GetWheelRotation(), event.GetWheelDelta());
    }

private:
    int turned_ = 0;  // since the last whole notch
};

}  // namespace tavrin::widgets
