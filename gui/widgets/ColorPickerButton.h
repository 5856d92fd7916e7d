#pragma once

#include "foundation/Color.h"
#include "foundation/Function.h"
#include "foundation/String.h"
#include "gui/widgets/CustomControl.h"

#include <utility>

namespace tavrin::widgets {

/// A button that shows a colour of linear components, which may be above 1, and lets the user pick
/// another one in a dialog. Main thread.
class ColorPickerButton final : public ClickableControl {
public:
    /// The title is that of the dialog; the size is in device-independent pixels.
    ColorPickerButton(wxWindow* parent, wxWindowID id, const String& title, wxSize size,
                      const Rgb& color);

    const Rgb& getColor() const { return color_; }
    /// `notify` calls the callback, also when the colour is the old one.
    void setColor(const Rgb& color, bool notify);
    /// Called while the user tries out colours, and with the old one after the dialog has been
    /// cancelled.
    void callOnChange(Function<void(const Rgb&)> callback) { onChange_ = std::move(callback); }

private:
    void onClick() override;
    void pick();
    void paint(wxGraphicsContext& canvas) override;
    wxSize DoGetBestClientSize() const override { return FromDIP(size_); }

    String title_;
    wxSize size_;
    Rgb color_;
    Function<void(const Rgb&)> onChange_;
};

}  // namespace tavrin::widgets
