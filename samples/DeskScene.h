#pragma once

#include "samples/Camera.h"
#include "samples/Scene.h"

namespace tavrin::samples {

/// A writing desk in the evening: books, ceramics, brushed metal and a ball of glass between a
/// window on the city, a neon ring, a filament lamp and the warm light of a lamp beside the viewer.
Scene makeDeskScene();

/// The camera in front of the desk, focused on the glass ball.
Camera::View getDeskView();

}  // namespace tavrin::samples
