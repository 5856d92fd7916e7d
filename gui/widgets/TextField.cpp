#include "gui/widgets/TextField.h"

#include "gui/widgets/Conversions.h"

namespace tavrin::widgets {

TextField::TextField(wxWindow* parent, wxWindowID id, int width)
    : CustomControl(parent, id), width_(width), editor_(*this) {
    SetName("TextField");
    SetCursor(wxCursor(wxCURSOR_IBEAM));
    SetInitialSize();
    Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent& event) { onLeftDown(event); });
    Bind(wxEVT_LEFT_DCLICK, [this](wxMouseEvent&) { editor_.selectAll(); });
    Bind(wxEVT_LEFT_UP, [this](wxMouseEvent&) { letGo(); });
    Bind(wxEVT_MOTION, [this](wxMouseEvent& event) {
        if (HasCapture()) {
            editor_.pointAt(event.GetPosition().x, true);
        }
    });
    Bind(wxEVT_KEY_DOWN, &TextField::onKeyDown, this);
    Bind(wxEVT_CHAR, [this](wxKeyEvent& event) {
        if (!editor_.isActive() || !editor_.handleCharacter(event)) {
            event.Skip();
        }
    });
    Bind(wxEVT_SET_FOCUS, [this](wxFocusEvent& event) {
        event.Skip();
        editor_.begin(text_);
    });
    Bind(wxEVT_KILL_FOCUS, [this](wxFocusEvent& event) {
        event.Skip();
        end(true);
    });
}

String TextField::getText() const {
    return toString(text_);
}

void TextField::setText(const String& text) {
    text_ = toWxString(text);
    if (editor_.isActive()) {
        editor_.begin(text_);
    }
    Refresh();
}

void TextField::end(bool accept) {
    if (!editor_.isActive()) {
        return;
    }
    editor_.end();
    if (accept && editor_.getText() != text_) {
        text_ = editor_.getText();
        if (onAccept_) {
            onAccept_(toString(text_));
        }
    }
}

void TextField::onLeftDown(const wxMouseEvent& event) {
    // The first click selects all, as the keyboard does.
    if (!HasFocus()) {
        SetFocus();
        return;
    }
    hold();
    editor_.pointAt(event.GetPosition().x, event.ShiftDown());
}

bool TextField::wantsKey(const wxKeyEvent& event) const {
    const bool isCommand = event.ControlDown() || event.AltDown();
    if (event.GetKeyCode() == WXK_ESCAPE) {
        return editor_.getText() != text_;  // otherwise it is the dialog's
    }
    return !isCommand || LineEditor::isEditingKey(event);
}

void TextField::onKeyDown(wxKeyEvent& event) {
    switch (event.GetKeyCode()) {
        case WXK_RETURN:
        case WXK_NUMPAD_ENTER:
            end(true);
            editor_.begin(text_);
            return;
        case WXK_ESCAPE:
            editor_.begin(text_);
            return;
        default:
            if (!editor_.isActive()) {
                editor_.begin(text_);
            }
            if (!editor_.handleKey(event)) {
                event.Skip();
            }
    }
}

wxSize TextField::DoGetBestClientSize() const {
    return FromDIP(wxSize(width_, skin().controlHeight));
}

void TextField::paint(wxGraphicsContext& canvas) {
    drawField(canvas, *this, GetClientRect(), skin(), getBoxState());
    const wxRect area = GetClientRect().Deflate(FromDIP(skin().padding), 0);
    if (editor_.isActive()) {
        editor_.paint(canvas, area, GetFont(), skin());
    } else {
        drawText(canvas, text_, area, GetFont(), getTextColor());
    }
}

}  // namespace tavrin::widgets
