#pragma once

#include "foundation/Geometry.h"
#include "foundation/Path.h"
#include "foundation/String.h"

#include <vector>

namespace tavrin::windows {

/// What the title of the main window tells.
struct WindowState {
    bool isLoading = false;
    bool isSaving = false;
    bool isLoaded = false;    ///< an image
    bool isModified = false;  ///< since it was loaded or saved
    std::vector<Path> inputs;
    Pixel imageSize;  ///< of what the canvas shows
    int zoomLevel = 0;
};

/// "Tavrin Image Editor 0.1.0 (*/renders/desk.txr, 1920x1080px, 1:2)".
String composeTitle(const WindowState& state);

}  // namespace tavrin::windows
