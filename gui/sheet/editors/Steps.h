#pragma once

#include "gui/widgets/WheelSteps.h"

#include <QWheelEvent>

namespace tavrin::sheet {

/// What the keyboard makes of a step while it is done: with Shift a tenth, with Ctrl ten times.
inline double getStepFactor(Qt::KeyboardModifiers modifiers) {
    return modifiers.testFlag(Qt::ShiftModifier)     ? 0.1
           : modifiers.testFlag(Qt::ControlModifier) ? 10.0
                                                     : 1.0;
}

/// The notches that this event completes.
inline int takeSteps(widgets::WheelSteps& wheel, const QWheelEvent& event) {
    // With Alt, and on some systems with Shift, the wheel is turned to the side.
    const QPoint angle = event.angleDelta();
    return wheel.take(angle.y() != 0 ? angle.y() : angle.x(), QWheelEvent::DefaultDeltasPerStep);
}

}  // namespace tavrin::sheet
