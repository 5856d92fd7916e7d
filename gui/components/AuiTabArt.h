#pragma once

#include "gui/widgets/GuiSkin.h"

#include <wx/aui/auibook.h>
#include <wx/aui/tabart.h>

namespace tavrin::components {

/// Draws tabs with one corner cut off, in the skin's colours. They have no icons and no buttons.
/// Main thread.
class AuiTabArt final : public wxAuiSimpleTabArt {
public:
    AuiTabArt() : AuiTabArt(widgets::GuiSkin::DEFAULT()) {}
    /// The skin's base colour for tabs and behind them, the highlight for the active one.
    explicit AuiTabArt(const widgets::GuiSkin& skin);

    wxAuiTabArt* Clone() override { return new AuiTabArt(*this); }
    void DrawBackground(wxDC& dc, wxWindow* window, const wxRect& rectangle) override;
    void DrawTab(wxDC& dc, wxWindow* window, const wxAuiNotebookPage& page, const wxRect& rectangle,
                 int closeButtonState, wxRect* tabRectangle, wxRect* buttonRectangle,
                 int* xExtent) override;
    wxSize GetTabSize(wxDC& dc, wxWindow* window, const wxString& caption,
                      const wxBitmapBundle& bitmap, bool isActive, int closeButtonState,
                      int* xExtent) override;

private:
    void drawShape(wxDC& dc, const wxWindow& window, const wxRect& tab, bool isActive) const;
    void drawCaption(wxDC& dc, const wxWindow& window, const wxRect& tab,
                     const wxAuiNotebookPage& page) const;

    wxPen borderPen_;
};

}  // namespace tavrin::components
