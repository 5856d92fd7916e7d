#include "gui/components/AuiTabArt.h"

#include "gui/components/AuiColors.h"

#include <wx/control.h>
#include <wx/dc.h>

#include <array>

namespace tavrin::components {
namespace {

// In device-independent pixels.
constexpr int kIndent = 10;  // of tabs from the left
constexpr int kCut = 3;      // of the corner
constexpr int kHorizontalPadding = 8;
constexpr int kVerticalPadding = 4;
constexpr int kFocusLineHeight = 2;  // above the edge

}  // namespace

AuiTabArt::AuiTabArt(const widgets::GuiSkin& skin) : borderPen_(skin.highlight) {
    SetColour(skin.base);
    SetActiveColour(skin.highlight);
    SetNormalFont(skin.getFont());
    SetSelectedFont(skin.getFont());
    SetMeasuringFont(skin.getFont());
}

void AuiTabArt::DrawBackground(wxDC& dc, wxWindow*, const wxRect& rectangle) {
    dc.SetBrush(m_bkBrush);
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.DrawRectangle(rectangle);
    const std::array<wxPen, 3> pens = {wxPen(kAuiEdge), wxPen(kAuiShadow), borderPen_};
    int y = rectangle.y + rectangle.height - static_cast<int>(pens.size());
    for (const wxPen& pen : pens) {
        dc.SetPen(pen);
        dc.DrawLine(rectangle.x, y, rectangle.x + rectangle.width, y);
        ++y;
    }
}

wxSize AuiTabArt::GetTabSize(wxDC& dc, wxWindow* window, const wxString& caption,
                             const wxBitmapBundle&, bool, int, int* xExtent) {
    dc.SetFont(m_measuringFont);
    wxSize size =
        dc.GetTextExtent(caption) + window->FromDIP(wxSize(kHorizontalPadding, kVerticalPadding));
    if ((m_flags & wxAUI_NB_TAB_FIXED_WIDTH) != 0) {
        size.x = m_fixedTabWidth;
    }
    *xExtent = size.x + 1;
    return size;
}

void AuiTabArt::DrawTab(wxDC& dc, wxWindow* window, const wxAuiNotebookPage& page,
                        const wxRect& rectangle, int closeButtonState, wxRect* tabRectangle,
                        wxRect* buttonRectangle, int* xExtent) {
    const wxSize size =
        GetTabSize(dc, window, page.caption, page.bitmap, page.active, closeButtonState, xExtent);
    const wxRect tab({rectangle.x + window->FromDIP(kIndent), rectangle.GetBottom() - size.y},
                     size);
    drawShape(dc, *window, tab, page.active);
    drawCaption(dc, *window, tab, page);
    *tabRectangle = tab;
    *buttonRectangle = wxRect();
}

void AuiTabArt::drawShape(wxDC& dc, const wxWindow& window, const wxRect& tab,
                          bool isActive) const {
    const int cut = window.FromDIP(kCut);
    const int right = tab.x + tab.width;
    const int bottom = tab.y + tab.height;
    const std::array<wxPoint, 6> shape = {wxPoint{tab.x, bottom}, {tab.x, tab.y + cut},
                                          {tab.x + cut, tab.y},   {right, tab.y},
                                          {right, bottom},        {tab.x, bottom}};
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(isActive ? m_selectedBkBrush : m_normalBkBrush);
    dc.DrawPolygon(static_cast<int>(shape.size()), shape.data());
    dc.SetPen(wxPen(kAuiEdge));
    dc.DrawLines(static_cast<int>(shape.size()) - 1, shape.data());
    if (isActive) {
        dc.SetPen(borderPen_);
        dc.DrawLine(tab.x + 1, bottom, right, bottom);
    }
}

void AuiTabArt::drawCaption(wxDC& dc, const wxWindow& window, const wxRect& tab,
                            const wxAuiNotebookPage& page) const {
    dc.SetFont(page.active ? m_selectedFont : m_normalFont);
    dc.SetTextForeground(page.active ? kAuiShadow : kAuiCaption);
    // Tabs of a fixed width may be too narrow.
    const wxString shown =
        wxControl::Ellipsize(page.caption, dc, wxELLIPSIZE_END, tab.width, wxELLIPSIZE_FLAGS_NONE);
    const wxSize text = dc.GetTextExtent(shown);
    const int left = tab.x + (tab.width - text.x) / 2;
    dc.DrawText(shown, left, tab.y + (tab.height - text.y) / 2);
    if (page.active && window.HasFocus()) {
        // A frame would leave no room for the caption.
        dc.SetPen(wxPen(kAuiShadow, window.FromDIP(1)));
        const int y = tab.y + tab.height - window.FromDIP(kFocusLineHeight);
        dc.DrawLine(left, y, left + text.x, y);
    }
}

}  // namespace tavrin::components
