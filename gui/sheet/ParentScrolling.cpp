#include "gui/sheet/ParentScrolling.h"

#include <wx/scrolwin.h>
#include <wx/window.h>

#include <algorithm>
#include <cmath>

namespace tavrin::sheet {
namespace {

wxWindow* findScrolledParent(const wxWindow& window) {
    for (wxWindow* parent = window.GetParent(); parent != nullptr; parent = parent->GetParent()) {
        if (dynamic_cast<wxScrollHelper*>(parent) != nullptr) {
            return parent;
        }
        if (parent->IsTopLevel()) {
            break;
        }
    }
    return nullptr;
}

/// How far to move along one axis so that `length` at `position` lies within `view`.
int getShift(int position, int length, int view) {
    if (position < 0 || length > view) {
        return position;
    }
    return position + length > view ? position + length - view : 0;
}

int toUnits(int pixels, int unit) {
    return unit == 0 ? 0
                     : static_cast<int>(std::ceil(std::abs(pixels) / static_cast<double>(unit))) *
                           (pixels < 0 ? -1 : 1);
}

}  // namespace

bool scrollParent(const wxWindow& window, int unitsX, int unitsY) {
    wxWindow* parent = findScrolledParent(window);
    if (parent == nullptr) {
        return false;
    }
    auto& scrolling = dynamic_cast<wxScrollHelper&>(*parent);
    const wxPoint start = scrolling.GetViewStart();
    scrolling.Scroll(start.x - unitsX, start.y - unitsY);
    return true;
}

void scrollIntoView(const wxWindow& window, const wxRect& part, int most) {
    wxWindow* parent = findScrolledParent(window);
    if (parent == nullptr) {
        return;
    }
    auto& scrolling = dynamic_cast<wxScrollHelper&>(*parent);
    // Not by way of the screen, where windows are only moved later.
    wxPoint corner = part.GetPosition();
    for (const wxWindow* each = &window; each != parent; each = each->GetParent()) {
        corner += each->GetPosition();
    }
    const wxSize view = parent->GetClientSize();
    int unitX = 0;
    int unitY = 0;
    scrolling.GetScrollPixelsPerUnit(&unitX, &unitY);
    const auto limit = [most](int shift) { return std::clamp(shift, -most, most); };
    const int shiftX = toUnits(limit(getShift(corner.x, part.width, view.x)), unitX);
    const int shiftY = toUnits(limit(getShift(corner.y, part.height, view.y)), unitY);
    if (shiftX != 0 || shiftY != 0) {
        const wxPoint start = scrolling.GetViewStart();
        scrolling.Scroll(start.x + shiftX, start.y + shiftY);
    }
}

}  // namespace tavrin::sheet
