#include "gui/components/AuiTabArt.h"

#include "gui/components/AuiColors.h"

#include <wx/dc.h>

#include <array>

namespace tavrin::components {
namespace {

constexpr int kIndent = 10;  // of tabs from the left
constexpr int kCut = 3;      // of the corner
constexpr int kHorizontalPadding = 8;
constexpr int kVerticalPadding = 4;

}  // namespace

AuiTabArt::AuiTabArt() : borderPen_(kAuiShadow) {
    applySkin(widgets::GuiSkin::DEFAULT());
}

void AuiTabArt::applySkin(const widgets::GuiSkin& skin) {
    SetColour(skin.base);
    SetActiveColour(skin.highlight);
    m_bkBrush = wxBrush(skin.base);
    borderPen_ = wxPen(skin.highlight);
}

wxAuiTabArt* AuiTabArt::Clone() {
    return new AuiTabArt(*this);
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

wxSize AuiTabArt::GetTabSize(wxDC& dc, wxWindow*, const wxString& caption, const wxBitmapBundle&,
                             bool, int, int* xExtent) {
    dc.SetFont(m_measuringFont);
    wxSize size = dc.GetTextExtent(caption) + wxSize(kHorizontalPadding, kVerticalPadding);
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
    const int left = rectangle.x + kIndent;
    const int right = left + size.x;
    const int bottom = rectangle.y + rectangle.height - 1;
    const int top = bottom - size.y;
    const std::array<wxPoint, 6> shape = {wxPoint{left, bottom}, {left, top + kCut},
                                          {left + kCut, top},    {right, top},
                                          {right, bottom},       {left, bottom}};
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(page.active ? m_selectedBkBrush : m_normalBkBrush);
    dc.DrawPolygon(static_cast<int>(shape.size()), shape.data());
    dc.SetPen(wxPen(kAuiEdge));
    dc.DrawLines(static_cast<int>(shape.size()) - 1, shape.data());
    if (page.active) {
        dc.SetPen(borderPen_);
        dc.DrawLine(left + 1, bottom, right, bottom);
    }
    dc.SetFont(page.active ? m_selectedFont : m_normalFont);
    dc.SetTextForeground(page.active ? kAuiShadow : kAuiCaption);
    const wxSize text = dc.GetTextExtent(page.caption);
    dc.DrawText(page.caption, left + (size.x - text.x) / 2, top + (size.y - text.y) / 2);
    *tabRectangle = wxRect(left, top, size.x, size.y);
    *buttonRectangle = wxRect();
}

}  // namespace tavrin::components
