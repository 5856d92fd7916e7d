#pragma once

#include "gui/widgets/GuiSkin.h"

#include <wx/aui/framemanager.h>

namespace tavrin::components {

/// Sent to the managed window when a pane has been docked somewhere else or made to float, before
/// the panes are laid out anew. The pane of the event is valid only while it is handled.
wxDECLARE_EVENT(paneDockChanged, wxAuiManagerEvent);

/// The docking of the main window, in the skin's colours. The owner calls UnInit() before the
/// window ends. Main thread.
class AuiManager final : public wxAuiManager, public widgets::ISkinnable {
public:
    explicit AuiManager(wxWindow* frame);

    void applySkin(const widgets::GuiSkin& skin) override;

protected:
    wxAuiFloatingFrame* CreateFloatingFrame(wxWindow* parent, const wxAuiPaneInfo& pane) override;
    bool ProcessDockResult(wxAuiPaneInfo& target, const wxAuiPaneInfo& place) override;

private:
    void tellDockChange(wxAuiPaneInfo& pane);
};

}  // namespace tavrin::components
