#include "gui/widgets/CustomControl.h"

#include <wx/dcbuffer.h>

#include <memory>

namespace tavrin::widgets {

CustomControl::CustomControl(wxWindow* parent, wxWindowID id) : skin_(&GuiSkin::DEFAULT()) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Create(parent, id, wxDefaultPosition, wxDefaultSize,
           wxBORDER_NONE | wxWANTS_CHARS | wxFULL_REPAINT_ON_RESIZE);
    SetFont(skin_->getFont());
    Bind(wxEVT_PAINT, [this](wxPaintEvent&) { onPaint(); });
    Bind(wxEVT_ENTER_WINDOW, [this](wxMouseEvent& event) {
        setHovered(true);
        event.Skip();
    });
    Bind(wxEVT_LEAVE_WINDOW, [this](wxMouseEvent& event) {
        setHovered(false);
        event.Skip();
    });
    const auto onFocus = [this](wxFocusEvent& event) {
        Refresh();
        event.Skip();
    };
    Bind(wxEVT_SET_FOCUS, onFocus);
    Bind(wxEVT_KILL_FOCUS, onFocus);
    Bind(wxEVT_CHAR_HOOK, &CustomControl::onCharHook, this);
    Bind(wxEVT_KEY_DOWN, &CustomControl::onKey, this);
    Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent&) { onHoldLost(); });
}

CustomControl::~CustomControl() {
    letGo();
}

void CustomControl::applySkin(const GuiSkin& skin) {
    skin_ = &skin;
    SetFont(skin.getFont());
    InvalidateBestSize();
    Refresh();
}

void CustomControl::onPaint() {
    wxAutoBufferedPaintDC dc(this);
    dc.SetBackground(GetParent()->GetBackgroundColour());
    dc.Clear();
    const std::unique_ptr<wxGraphicsContext> canvas(wxGraphicsContext::Create(dc));
    paint(*canvas);
}

void CustomControl::setHovered(bool hovered) {
    hovered_ = hovered;
    Refresh();
}

void CustomControl::onCharHook(wxKeyEvent& event) {
    if (wantsKey(event)) {
        event.StopPropagation();
    }
    event.Skip();
}

void CustomControl::onKey(wxKeyEvent& event) {
    if (event.GetKeyCode() == WXK_TAB && !event.ControlDown() && !event.AltDown()) {
        Navigate(event.ShiftDown() ? wxNavigationKeyEvent::IsBackward
                                   : wxNavigationKeyEvent::IsForward);
        return;
    }
    event.Skip();
}

void CustomControl::hold() {
    if (!HasCapture()) {
        CaptureMouse();
    }
}

void CustomControl::letGo() {
    if (HasCapture()) {
        ReleaseMouse();
    }
}

BoxState CustomControl::getBoxState(bool pressed) const {
    return {.enabled = IsEnabled(),
            .hovered = hovered_,
            .pressed = pressed,
            .focused = IsEnabled() && HasFocus()};
}

void CustomControl::DoEnable(bool enable) {
    wxControl::DoEnable(enable);
    if (!enable) {
        hovered_ = false;
        letGo();
        onHoldLost();
    }
    Refresh();
}

ClickableControl::ClickableControl(wxWindow* parent, wxWindowID id) : CustomControl(parent, id) {
    Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent&) { onLeftDown(); });
    Bind(wxEVT_LEFT_DCLICK, [this](wxMouseEvent&) { onLeftDown(); });
    Bind(wxEVT_LEFT_UP, [this](wxMouseEvent&) { onLeftUp(); });
    Bind(wxEVT_MOTION, [this](wxMouseEvent& event) { onMotion(event); });
    Bind(wxEVT_KEY_DOWN, &ClickableControl::onKeyDown, this);
    Bind(wxEVT_KEY_UP, &ClickableControl::onKeyUp, this);
    Bind(wxEVT_KILL_FOCUS, [this](wxFocusEvent& event) {
        if (pressedByKey_) {
            onHoldLost();
        }
        event.Skip();
    });
}

void ClickableControl::onHoldLost() {
    pressedByKey_ = false;
    setPressed(false);
}

void ClickableControl::setPressed(bool pressed) {
    pressed_ = pressed;
    Refresh();
}

void ClickableControl::onLeftDown() {
    if (CanAcceptFocus()) {
        SetFocus();
    }
    hold();
    setPressed(true);
}

void ClickableControl::onLeftUp() {
    const bool clicked = pressed_ && HasCapture();
    letGo();
    setPressed(false);
    if (clicked) {
        onClick();
    }
}

void ClickableControl::onMotion(const wxMouseEvent& event) {
    if (HasCapture()) {
        setPressed(GetClientRect().Contains(event.GetPosition()));
    }
}

bool ClickableControl::wantsKey(const wxKeyEvent& event) const {
    const int key = event.GetKeyCode();
    const bool isReturn = key == WXK_RETURN || key == WXK_NUMPAD_ENTER;
    return !event.HasAnyModifiers() && (key == WXK_SPACE || (isReturn && clicksOnReturn()));
}

void ClickableControl::onKeyDown(wxKeyEvent& event) {
    if (!wantsKey(event)) {
        event.Skip();
    } else if (event.GetKeyCode() == WXK_SPACE) {
        pressedByKey_ = true;
        setPressed(true);
    } else {
        onClick();
    }
}

void ClickableControl::onKeyUp(wxKeyEvent& event) {
    if (event.GetKeyCode() == WXK_SPACE && pressedByKey_) {
        onHoldLost();
        onClick();
        return;
    }
    event.Skip();
}

}  // namespace tavrin::widgets
