#pragma once

#include "gui/widgets/GuiSkin.h"

#include <wx/aui/auibook.h>
#include <wx/aui/tabart.h>

namespace tavrin::components {

/// Draws tabs with one corner cut off, in the skin's colours.
class AuiTabArt final : public wxAuiSimpleTabArt {
public:
    AuiTabArt();

    /// The colours of the skin: surfaces for tabs, the highlight for the active one.
    void applySkin(const widgets::GuiSkin& skin);

    wxAuiTabArt* Clone() override;
    void DrawBackground(wxDC& dc, wxWindow* window, const wxRect& rectangle) override;
    void DrawTab(wxDC& dc, wxWindow* window, const wxAuiNotebookPage& page, const wxRect& rectangle,
                 int closeButtonState, wxRect* tabRectangle, wxRect* buttonRectangle,
                 int* xExtent) override;
    wxSize GetTabSize(wxDC& dc, wxWindow* window, const wxString& caption,
                      const wxBitmapBundle& bitmap, bool isActive, int closeButtonState,
                      int* xExtent) override;

private:
    wxPen borderPen_;
};

}  // namespace tavrin::components
