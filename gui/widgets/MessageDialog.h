#pragma once

#include "foundation/CallbackLifetime.h"
#include "foundation/Function.h"
#include "foundation/String.h"

#include <wx/dialog.h>

#include <vector>

namespace tavrin::widgets {

enum class MessageIcon { None = 0, Error = 1, Warning = 2, Information = 3, Question = 4 };

/// What a message dialog says and how it may be left.
struct Message {
    String caption{};  ///< without one, the dialog has no title bar
    String text{};     ///< lines are broken where they are too long
    MessageIcon icon = MessageIcon::None;
    std::vector<String> buttons{};  ///< from left to right; Return presses the first
    /// Whether the title bar has a button that closes it, and Escape does.
    bool closes = true;
    /// Called when the user wants to close a dialog that does not close; may be empty.
    Function<void()> onCloseWanted{};
    /// Whether a click on another window of the program closes it.
    bool closesOnOutsideClick = false;
    bool staysOnTop = false;
    /// What it is centred over; the parent without one.
    const wxWindow* centeredOver = nullptr;
};

/// A text with an icon and buttons, modal to the program. Control+C copies the text. Main thread.
class MessageDialog final : public wxDialog {
public:
    /// Of showModal(), when no button was pressed.
    static constexpr int kClosed = -1;

    /// The parent may be null.
    MessageDialog(wxWindow* parent, Message message);

    /// Shows the dialog until it is left: the index of the pressed button, or kClosed.
    int showModal();
    /// Leaves the dialog as if the user had closed it; before showModal(), which then returns at
    /// once, or while it runs.
    void close() { end(kClosed); }

private:
    void build();
    wxWindow* makeText();
    wxSizer* makeButtons();
    void end(int result);
    void onKey(wxKeyEvent& event);
    void copyText() const;

    Message message_;
    bool ended_ = false;
    int result_ = kClosed;
    CallbackLifetime outsideClick_;
};

/// Shows a message with one button "OK".
void showMessage(wxWindow* parent, const String& caption, const String& text, MessageIcon icon);

}  // namespace tavrin::widgets
