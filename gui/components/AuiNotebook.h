#pragma once

#include "gui/widgets/GuiSkin.h"

#include <wx/aui/auibook.h>

namespace tavrin::components {

/// The tabs of the side panel, in the skin's colours.
class AuiNotebook final : public wxAuiNotebook, public widgets::ISkinnable {
public:
    explicit AuiNotebook(wxWindow* parent, int style = wxAUI_NB_TOP | wxAUI_NB_TAB_MOVE);

    void applySkin(const widgets::GuiSkin& skin) override;
};

}  // namespace tavrin::components
