#include "gui/widgets/FloatingWindow.h"

#include "gui/widgets/Modality.h"

#include <wx/dcbuffer.h>

#include <memory>

namespace tavrin::widgets {
namespace {

// The pointer's picture is to the right of and below its place.
constexpr int kPointerSize = 18;
constexpr int kGap = 6;

}  // namespace

FloatingWindow::FloatingWindow(wxWindow* parent) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Create(parent, wxBORDER_NONE);
    standOutsideModality(*this);
    SetFont(skin().getFont());
    Bind(wxEVT_PAINT, [this](wxPaintEvent&) { onPaint(); });
}

void FloatingWindow::onPaint() {
    wxAutoBufferedPaintDC dc(this);
    const std::unique_ptr<wxGraphicsContext> canvas(wxGraphicsContext::Create(dc));
    paint(*canvas);
}

void FloatingWindow::placeBeside(wxPoint pointer) {
    const wxSize size = GetSize();
    const wxPoint below = pointer + FromDIP(wxSize(kGap, kPointerSize));
    wxRect area = keepOnDisplay(wxRect(below, size), pointer);
    if (area.y != below.y) {
        // Above the pointer, or beside it where neither fits.
        area = keepOnDisplay({{area.x, pointer.y - FromDIP(kGap) - size.y}, size}, pointer);
    }
    if (area.Contains(pointer)) {
        const int left = pointer.x - FromDIP(kGap) - size.x;
        area.x = left >= 0 ? left : pointer.x + FromDIP(kPointerSize);
    }
    Move(area.GetPosition());
}

}  // namespace tavrin::widgets
