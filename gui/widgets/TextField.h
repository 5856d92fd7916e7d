#pragma once

#include "foundation/Function.h"
#include "foundation/String.h"
#include "gui/widgets/CustomControl.h"
#include "gui/widgets/LineEditor.h"

#include <utility>

namespace tavrin::widgets {

/// One line of text. Return and leaving the field accept what is typed, Escape takes it back. Main
/// thread.
class TextField : public CustomControl {
public:
    /// The width is in device-independent pixels.
    TextField(wxWindow* parent, wxWindowID id, int width);

    String getText() const;
    /// Ends typing; does not call the callback.
    void setText(const String& text);
    /// Called with a changed text after the user has accepted it.
    void callOnAccept(Function<void(const String&)> callback) { onAccept_ = std::move(callback); }

protected:
    void paint(wxGraphicsContext& canvas) override;
    bool wantsKey(const wxKeyEvent& event) const override;
    wxSize DoGetBestClientSize() const override;

private:
    void onHoldLost() override { end(false); }
    void end(bool accept);
    void onLeftDown(const wxMouseEvent& event);
    void onKeyDown(wxKeyEvent& event);

    int width_;
    wxString text_;
    LineEditor editor_;
    Function<void(const String&)> onAccept_;
};

}  // namespace tavrin::widgets
