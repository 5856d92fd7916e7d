#include "gui/widgets/Spinner.h"

#include <wx/display.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

// What the mouse and the keyboard do to a spinner.

namespace tavrin::widgets {
namespace {

constexpr int kDragThreshold = 3;
constexpr double kPixelsPerStep = 4.0;
constexpr double kPage = 10.0;     // steps
constexpr int kRepeatDelay = 400;  // milliseconds

/// How many steps a key makes.
double getSteps(int key) {
    switch (key) {
        case WXK_UP:
        case WXK_NUMPAD_UP:
            return 1.0;
        case WXK_DOWN:
        case WXK_NUMPAD_DOWN:
            return -1.0;
        case WXK_PAGEUP:
        case WXK_NUMPAD_PAGEUP:
            return kPage;
        case WXK_PAGEDOWN:
        case WXK_NUMPAD_PAGEDOWN:
            return -kPage;
        default:
            return 0.0;
    }
}

/// Also the keys that open typing.
bool isSteppingKey(int key) {
    return getSteps(key) != 0.0 || key == WXK_RETURN || key == WXK_NUMPAD_ENTER || key == WXK_F2;
}

bool startsNumber(const wxKeyEvent& event) {
    const wxChar character = event.GetUnicodeKey();
    return character != 0 && wxString("0123456789.,+-(").Contains(wxString(character));
}

}  // namespace

void Spinner::bindMouse() {
    Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent& event) { onLeftDown(event); });
    Bind(wxEVT_LEFT_UP, [this](wxMouseEvent&) { onLeftUp(); });
    Bind(wxEVT_LEFT_DCLICK, [this](wxMouseEvent& event) { onDoubleClick(event); });
    Bind(wxEVT_MOTION, [this](wxMouseEvent& event) { onMotion(event); });
    Bind(wxEVT_MOUSEWHEEL, &Spinner::onWheel, this);
}

void Spinner::onHoldLost() {
    drag_.reset();
    repeat_.cancel();
    endTyping(false);
}

void Spinner::onLeftDown(const wxMouseEvent& event) {
    SetFocus();
    openedByLastClick_ = false;
    hold();
    if (getArrowArea().Contains(event.GetPosition())) {
        endTyping(true);
        const double sign = event.GetPosition().y < GetClientSize().y / 2 ? 1.0 : -1.0;
        repeatedStep_ = sign * getFactor(event);
        repeat_.scheduleDelayed(kRepeatDelay);
        stepBy(repeatedStep_);
    } else if (editor_.isActive()) {
        editor_.pointAt(event.GetPosition().x, event.ShiftDown());
    } else {
        drag_ = Drag{.last = ClientToScreen(event.GetPosition()),
                     .value = static_cast<double>(std::isnan(value_) ? default_ : value_),
                     .start = value_};
    }
}

void Spinner::onLeftUp() {
    const bool clicked = drag_ && !drag_->moved;
    drag_.reset();
    repeat_.cancel();
    letGo();
    Refresh();
    if (clicked) {
        openedByLastClick_ = true;
        beginTyping(format(precision_));
    }
}

void Spinner::onDoubleClick(const wxMouseEvent& event) {
    if (openedByLastClick_) {
        openedByLastClick_ = false;
        endTyping(false);
        changeTo(default_);
    } else if (getArrowArea().Contains(event.GetPosition())) {
        onLeftDown(event);
    } else if (editor_.isActive()) {
        editor_.selectAll();
    }
}

void Spinner::onMotion(const wxMouseEvent& event) {
    if (editor_.isActive()) {
        if (HasCapture()) {
            editor_.pointAt(event.GetPosition().x, true);
        }
        return;
    }
    if (!drag_) {
        return;
    }
    const wxPoint position = ClientToScreen(event.GetPosition());
    const wxPoint way = position - drag_->last;
    if (!drag_->moved && std::max(std::abs(way.x), std::abs(way.y)) < FromDIP(kDragThreshold)) {
        return;
    }
    drag_->moved = true;
    drag_->last = wrapPointer(position);
    // A long way is that of the pointer from one edge of the display to the other.
    if (std::abs(way.x) < wxGetDisplaySize().x / 2 && std::abs(way.y) < wxGetDisplaySize().y / 2) {
        const double steps = ToDIP(way.x - way.y) / kPixelsPerStep;
        drag_->value = std::clamp(drag_->value + steps * getStep() * getFactor(event) * extra_,
                                  static_cast<double>(minimum_), static_cast<double>(maximum_));
        changeTo(drag_->value);
    }
}

wxPoint Spinner::wrapPointer(wxPoint position) {
    const int display = wxDisplay::GetFromPoint(position);
    if (display == wxNOT_FOUND) {
        return position;
    }
    const wxRect screen = wxDisplay(static_cast<unsigned>(display)).GetGeometry();
    const auto wrap = [](int place, int first, int last) {
        // One pixel off the other edge, where it is not sent back at once.
        return place <= first ? last - 1 : place >= last ? first + 1 : place;
    };
    const wxPoint wrapped(wrap(position.x, screen.GetLeft(), screen.GetRight()),
                          wrap(position.y, screen.GetTop(), screen.GetBottom()));
    if (wrapped != position) {
        const wxPoint place = ScreenToClient(wrapped);
        WarpPointer(place.x, place.y);
    }
    return wrapped;
}

void Spinner::onWheel(wxMouseEvent& event) {
    // Otherwise it scrolls what the control is in, and values do not change on the way.
    if (!HasFocus() || event.GetWheelAxis() != wxMOUSE_WHEEL_VERTICAL || drag_) {
        event.Skip();
        return;
    }
    endTyping(true);
    if (const int steps = wheel_.take(event); steps != 0) {
        stepBy(steps * getFactor(event));
    }
}

bool Spinner::wantsKey(const wxKeyEvent& event) const {
    const int key = event.GetKeyCode();
    if (drag_) {
        return key == WXK_ESCAPE;
    }
    const bool isCommand = event.ControlDown() || event.AltDown();
    if (!editor_.isActive()) {
        return !isCommand && (isSteppingKey(key) || startsNumber(event));
    }
    return !isCommand || LineEditor::isEditingKey(event);
}

void Spinner::onKeyDown(wxKeyEvent& event) {
    const int key = event.GetKeyCode();
    if (key == WXK_ESCAPE && drag_) {
        const float start = drag_->start;
        drag_.reset();
        letGo();
        setValue(start, true);
        return;
    }
    if (!drag_ && (editor_.isActive() ? handleTypingKey(event) : handleSteppingKey(event))) {
        return;
    }
    event.Skip();
}

bool Spinner::handleTypingKey(const wxKeyEvent& event) {
    switch (event.GetKeyCode()) {
        case WXK_RETURN:
        case WXK_NUMPAD_ENTER:
            endTyping(true);
            return true;
        case WXK_ESCAPE:
            endTyping(false);
            return true;
        default:
            if (isSteppingKey(event.GetKeyCode())) {
                endTyping(true);
                return handleSteppingKey(event);
            }
            return editor_.handleKey(event);
    }
}

bool Spinner::handleSteppingKey(const wxKeyEvent& event) {
    const int key = event.GetKeyCode();
    if (!isSteppingKey(key)) {
        return false;
    }
    if (const double steps = getSteps(key); steps != 0.0) {
        stepBy(steps * getFactor(event));
    } else {
        beginTyping(format(precision_));
    }
    return true;
}

void Spinner::onCharacter(wxKeyEvent& event) {
    if (!editor_.isActive() && !drag_ && !event.ControlDown() && !event.AltDown() &&
        startsNumber(event)) {
        beginTyping(format(precision_));
    }
    if (!editor_.isActive() || !editor_.handleCharacter(event)) {
        event.Skip();
    }
}

}  // namespace tavrin::widgets
