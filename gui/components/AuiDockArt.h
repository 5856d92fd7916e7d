#pragma once

#include "gui/widgets/GuiSkin.h"

#include <wx/aui/framemanager.h>
// After the header that declares the panes it speaks of.
#include <wx/aui/dockart.h>

namespace tavrin::components {

/// Draws what is between the panes of the main window in the skin's colours. Main thread.
class AuiDockArt final : public wxAuiDefaultDockArt {
public:
    AuiDockArt() : AuiDockArt(widgets::GuiSkin::DEFAULT()) {}
    explicit AuiDockArt(const widgets::GuiSkin& skin);

    wxAuiDockArt* Clone() override { return new AuiDockArt(*this); }
    /// The colours are those of the skin, whatever the system's become.
    void UpdateColoursFromSystem() override {}

private:
    void setCaption(const widgets::GuiSkin& skin);
};

}  // namespace tavrin::components
