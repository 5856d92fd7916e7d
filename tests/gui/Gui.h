#pragma once

#include "foundation/Function.h"

#include <wx/frame.h>
#include <wx/gdicmn.h>
#include <wx/image.h>

#include <string>

namespace tavrin::tests {

// Tests of windows act as a user does: they move the mouse and press keys of the display, and wait
// until what they expect is there. Main thread.

/// Handles events until there are none.
void handleEvents();
/// Handles events until the condition holds, for some seconds at most; what it says in the end.
bool waitFor(const Function<bool()>& condition);

/// A frame of that size on the display, with the keyboard, which ends with the object.
class TestFrame {
public:
    explicit TestFrame(wxSize size = {800, 600});
    ~TestFrame();
    TestFrame(const TestFrame&) = delete;
    TestFrame& operator=(const TestFrame&) = delete;

    wxFrame& operator*() const { return *frame_; }
    wxFrame* operator->() const { return frame_; }
    /// After the children have been added: lays them out and waits until they are shown.
    void show();

private:
    wxFrame* frame_;
};

// Of the mouse, to places in client coordinates of a window; all handle the events that follow.
void moveMouse(const wxWindow& window, wxPoint position);
void clickMouse(const wxWindow& window, wxPoint position, int button = wxMOUSE_BTN_LEFT);
void doubleClickMouse(const wxWindow& window, wxPoint position);
/// Presses at the first place, moves in steps, and lets go at the last.
void dragMouse(const wxWindow& window, wxPoint from, wxPoint to, int button = wxMOUSE_BTN_LEFT);
/// Presses a button where the mouse is, or lets it go.
void pressMouse(int button = wxMOUSE_BTN_LEFT);
void releaseMouse(int button = wxMOUSE_BTN_LEFT);
/// Turns the wheel; positive numbers are away from the user.
void turnWheel(const wxWindow& window, wxPoint position, int steps);

/// Presses and lets go a key (WXK_TAB, 'A') while modifiers (wxMOD_CONTROL) are held.
void pressKey(int key, int modifiers = wxMOD_NONE);
void typeText(const std::string& text);

/// What the display shows of the window now.
wxImage readScreen(const wxWindow& window);

/// Writes what the display shows of the window as PNG to the folder that the environment variable
/// TAVRIN_SCREENSHOTS names; does nothing without it. For people who look at it.
void keepScreenshot(const wxWindow& window, const std::string& name);

}  // namespace tavrin::tests
