#include "gui/widgets/ColorPickerButton.h"

#include "gui/widgets/ColorPickerDialog.h"
#include "gui/widgets/Conversions.h"

#include <wx/weakref.h>

namespace tavrin::widgets {

ColorPickerButton::ColorPickerButton(wxWindow* parent, wxWindowID id, const String& title,
                                     wxSize size, const Rgb& color)
    : ClickableControl(parent, id), title_(title), size_(size), color_(color) {
    SetName("ColorPickerButton");
    SetInitialSize();
}

void ColorPickerButton::setColor(const Rgb& color, bool notify) {
    color_ = color;
    Refresh();
    if (notify && onChange_) {
        // A copy, as the callback may end this object.
        const Function<void(const Rgb&)> callback = onChange_;
        callback(color);
    }
}

void ColorPickerButton::onClick() {
    // After the click has been handled, as the dialog handles events of its own.
    CallAfter([this] { pick(); });
}

void ColorPickerButton::pick() {
    // What is around the button may be rebuilt while the dialog is open.
    const wxWeakRef<ColorPickerButton> self(this);
    const auto set = [&self](const Rgb& color) {
        if (self) {
            self->setColor(color, true);
        }
    };
    const Rgb before = color_;
    ColorPickerDialog dialog(wxGetTopLevelParent(this), title_, before);
    dialog.SetPosition(
        keepOnDisplay({ClientToScreen(wxPoint(0, GetClientSize().y + 2)), dialog.GetSize()},
                      GetScreenPosition())
            .GetPosition());
    dialog.callOnChange(set);
    if (!dialog.showModal() && !(dialog.getColor() == before)) {
        set(before);
    }
}

void ColorPickerButton::paint(wxGraphicsContext& canvas) {
    const wxRect area = GetClientRect();
    const BoxState state = getBoxState(isPressed());
    const wxColour color = toWxColour(encodeForDisplay(color_));
    const wxColour line = state.focused   ? skin().borderFocus
                          : state.hovered ? skin().highlight
                                          : skin().border;
    drawBox(canvas, area, FromDIP(skin().cornerRadius),
            state.enabled ? color : mix(skin().base, color, 0.25), line);
}

}  // namespace tavrin::widgets
