#include "gui/components/AuiNotebook.h"

#include "gui/components/AuiTabArt.h"

#include <memory>

namespace tavrin::components {

AuiNotebook::AuiNotebook(wxWindow* parent, int style)
    : wxAuiNotebook(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, style) {
    m_mgr.GetArtProvider()->SetMetric(wxAUI_DOCKART_PANE_BORDER_SIZE, 0);
    applySkin(widgets::GuiSkin::DEFAULT());
}

void AuiNotebook::applySkin(const widgets::GuiSkin& skin) {
    auto art = std::make_unique<AuiTabArt>();
    art->applySkin(skin);
    SetArtProvider(art.release());
}

}  // namespace tavrin::components
