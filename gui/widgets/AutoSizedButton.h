#pragma once

#include "foundation/Function.h"
#include "foundation/String.h"
#include "gui/widgets/CustomControl.h"
#include "gui/widgets/Tooltip.h"

#include <wx/bmpbndl.h>

#include <memory>
#include <utility>

namespace tavrin::widgets {

/// A button that is as wide as its label and icon need. Main thread.
class AutoSizedButton : public ClickableControl {
public:
    /// Primary is the button that Return presses in a dialog.
    enum class Look { Default, Primary };

    /// The height and the least width are in device-independent pixels.
    AutoSizedButton(wxWindow* parent, wxWindowID id, const String& label, int height,
                    int minimumWidth = 0, Look look = Look::Default);

    /// Before the label, or alone without one.
    void setIcon(const wxBitmapBundle& enabled, const wxBitmapBundle& disabled);
    void setTooltip(const String& text);
    /// Called after a click. It may end the button.
    void callOnClick(Function<void()> callback) { onClick_ = std::move(callback); }

protected:
    void paint(wxGraphicsContext& canvas) override;
    wxSize DoGetBestClientSize() const override;

private:
    void onClick() override;
    wxSize getIconSize() const;

    int height_;
    int minimumWidth_;
    Look look_;
    wxBitmapBundle enabledIcon_;
    wxBitmapBundle disabledIcon_;
    Function<void()> onClick_;
    std::unique_ptr<Tooltip> tooltip_;
};

}  // namespace tavrin::widgets
