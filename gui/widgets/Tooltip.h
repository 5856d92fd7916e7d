#pragma once

#include "foundation/String.h"
#include "gui/widgets/DelayedCallback.h"

#include <wx/weakref.h>
#include <wx/window.h>

namespace tavrin::widgets {

/// A text that shows near the pointer when it rests on a window. The owner of the tooltip ends it
/// before the window or with it. Main thread.
class Tooltip {
public:
    Tooltip(wxWindow& window, const String& text);
    ~Tooltip();
    Tooltip(const Tooltip&) = delete;
    Tooltip& operator=(const Tooltip&) = delete;

    /// An empty text shows nothing.
    void setText(const String& text);
    bool isShown() const;

private:
    void onMotion(wxMouseEvent& event);
    void onLeave(wxMouseEvent& event);
    void onUse(wxMouseEvent& event);
    void onKey(wxKeyEvent& event);
    void show();
    void hide();

    wxWeakRef<wxWindow> window_;
    String text_;
    DelayedCallback delay_;
    wxWeakRef<wxWindow> popup_;
    bool dismissed_ = false;  // until the pointer comes again
};

}  // namespace tavrin::widgets
