#pragma once

#include "gui/widgets/GuiSkin.h"

#include <wx/aui/dockart.h>

namespace tavrin::components {

/// Draws what is between the panes of the main window in the skin's colours.
class AuiDockArt final : public wxAuiDefaultDockArt {
public:
    AuiDockArt() : AuiDockArt(widgets::GuiSkin::DEFAULT()) {}
    explicit AuiDockArt(const widgets::GuiSkin& skin);
};

}  // namespace tavrin::components
