#pragma once

#include "foundation/Function.h"
#include "foundation/String.h"
#include "gui/widgets/GuiSkin.h"

#include <wx/panel.h>

#include <utility>

namespace tavrin::widgets {

/// A section of a panel: a header with a title, and a body that a click on the header hides and
/// shows. When its height changes, it lays out what it is in, up to the scrolled or top-level
/// window. Main thread.
class CollapsiblePanel : public wxPanel, public ISkinnable {
public:
    /// Takes the body and the header's control (a check box, or null), which become its children.
    /// The style is that of the panel. The header is at least as large as headerSize says, in
    /// device-independent pixels; -1 is what it needs.
    CollapsiblePanel(wxWindow* parent, const GuiSkin& skin, const String& title, wxWindow* body,
                     wxWindow* headerControl, long style, wxSize headerSize);

    bool isCollapsed() const { return !body_->IsShown(); }
    /// Does not call the callback.
    void setCollapsed(bool collapsed);
    /// Called after the user has hidden (true) or shown the body.
    void callOnCollapse(Function<void(bool)> callback) { onCollapse_ = std::move(callback); }
    wxWindow& getBody() const { return *body_; }

    void applySkin(const GuiSkin& skin) override;

private:
    class Header;

    void toggle();

    Header* header_;
    wxWindow* body_;
    Function<void(bool)> onCollapse_;
};

}  // namespace tavrin::widgets
