#pragma once

#include <wx/window.h>

namespace tavrin::widgets {

/// Keeps a window from repainting while it lives, so that several changes show as one. The window
/// outlives it. Main thread; may be nested.
class ScopedWindowFreezer {
public:
    explicit ScopedWindowFreezer(wxWindow* window) : window_(window) { window_->Freeze(); }
    ~ScopedWindowFreezer() { window_->Thaw(); }
    ScopedWindowFreezer(const ScopedWindowFreezer&) = delete;
    ScopedWindowFreezer& operator=(const ScopedWindowFreezer&) = delete;

private:
    wxWindow* window_;
};

}  // namespace tavrin::widgets
