#pragma once

#include "foundation/Function.h"
#include "foundation/String.h"
#include "gui/widgets/CustomControl.h"

#include <utility>

namespace tavrin::widgets {

/// A switch with a mark and a label, which may be empty. Main thread.
class CheckBox : public ClickableControl {
public:
    CheckBox(wxWindow* parent, wxWindowID id, const String& label);

    bool getValue() const { return value_; }
    /// `notify` calls the callback, also when the value is the old one.
    void setValue(bool value, bool notify);
    /// Called with the new value after the user has changed it.
    void callOnChange(Function<void(bool)> callback) { onChange_ = std::move(callback); }

protected:
    void paint(wxGraphicsContext& canvas) override;
    wxSize DoGetBestClientSize() const override;

private:
    void onClick() override { setValue(!value_, true); }
    bool clicksOnReturn() const override { return false; }

    bool value_ = false;
    Function<void(bool)> onChange_;
};

}  // namespace tavrin::widgets
