#include "gui/components/AuiManager.h"

#include "gui/components/AuiDockArt.h"

#include <wx/aui/floatpane.h>
#include <wx/frame.h>

namespace tavrin::components {
namespace {

constexpr wxByte kHintOpacity = 96;
// Of the pane that stands for the one being dragged while a place is looked for.
const char* const kHintName = "__HINT__";

}  // namespace

wxDEFINE_EVENT(paneDockChanged, wxAuiManagerEvent);

AuiManager::AuiManager(wxWindow* frame) : wxAuiManager(frame, wxAUI_MGR_DEFAULT) {
    applySkin(widgets::GuiSkin::DEFAULT());
}

void AuiManager::applySkin(const widgets::GuiSkin& skin) {
    SetArtProvider(new AuiDockArt(skin));
    if (m_hintWnd != nullptr) {
        m_hintWnd->SetBackgroundColour(skin.highlight);
        m_hintFadeMax = kHintOpacity;
    }
}

wxAuiFloatingFrame* AuiManager::CreateFloatingFrame(wxWindow* parent, const wxAuiPaneInfo& pane) {
    wxAuiFloatingFrame* const frame = wxAuiManager::CreateFloatingFrame(parent, pane);
    // The floating frame has a manager of its own, which deletes its art.
    frame->GetAuiManager().SetArtProvider(GetArtProvider()->Clone());
    wxAuiPaneInfo told = pane;
    tellDockChange(told);
    return frame;
}

bool AuiManager::ProcessDockResult(wxAuiPaneInfo& target, const wxAuiPaneInfo& place) {
    const bool isDocked = wxAuiManager::ProcessDockResult(target, place);
    if (isDocked && !target.IsFloating() && target.name != kHintName) {
        tellDockChange(target);
    }
    return isDocked;
}

void AuiManager::tellDockChange(wxAuiPaneInfo& pane) {
    wxAuiManagerEvent event(paneDockChanged);
    event.SetManager(this);
    event.SetPane(&pane);
    GetManagedWindow()->GetEventHandler()->ProcessEvent(event);
}

}  // namespace tavrin::components
