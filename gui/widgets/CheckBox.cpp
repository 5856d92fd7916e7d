#include "gui/widgets/CheckBox.h"

#include "gui/widgets/Conversions.h"

#include <wx/pen.h>

#include <algorithm>

namespace tavrin::widgets {
namespace {

constexpr int kBoxSize = 13;
constexpr int kGap = 6;

}  // namespace

CheckBox::CheckBox(wxWindow* parent, wxWindowID id, const String& label)
    : ClickableControl(parent, id) {
    SetName("CheckBox");
    SetLabel(toWxString(label));
    SetInitialSize();
}

void CheckBox::setValue(bool value, bool notify) {
    value_ = value;
    Refresh();
    if (notify && onChange_) {
        // A copy, as the callback may end this object.
        const Function<void(bool)> callback = onChange_;
        callback(value);
    }
}

wxSize CheckBox::DoGetBestClientSize() const {
    // One pixel on each side is for the line of the keyboard.
    const int box = FromDIP(kBoxSize) + 2;
    if (GetLabel().empty()) {
        return {box, box};
    }
    const wxSize text = GetTextExtent(GetLabel());
    return {box + FromDIP(kGap) + text.x + FromDIP(3), std::max(box, text.y + FromDIP(4))};
}

void CheckBox::paint(wxGraphicsContext& canvas) {
    const wxRect area = GetClientRect();
    const int size = FromDIP(kBoxSize);
    const wxRect box(1, (area.height - size) / 2, size, size);
    const BoxState state = getBoxState(isPressed());
    if (value_ && state.enabled) {
        wxColour fill = state.hovered ? mix(skin().accent, skin().highlight, 0.25) : skin().accent;
        fill = state.pressed ? mix(fill, skin().field, 0.4) : fill;
        drawBox(canvas, box, FromDIP(2), fill, state.focused ? skin().accentText : skin().accent);
    } else {
        drawField(canvas, *this, box, skin(), state);
    }
    if (value_) {
        wxGraphicsPenInfo pen(state.enabled ? skin().accentText : skin().textDisabled);
        canvas.SetPen(canvas.CreatePen(pen.Width(FromDIP(2)).Cap(wxCAP_ROUND).Join(wxJOIN_ROUND)));
        const wxPoint2DDouble mark[] = {{box.x + size * 0.25, box.y + size * 0.52},
                                        {box.x + size * 0.43, box.y + size * 0.70},
                                        {box.x + size * 0.76, box.y + size * 0.32}};
        canvas.StrokeLines(3, mark);
    }
    const int left = box.x + size + 1 + FromDIP(kGap);
    drawText(canvas, GetLabel(), {left, area.y, area.width - left, area.height}, GetFont(),
             getTextColor());
}

}  // namespace tavrin::widgets
