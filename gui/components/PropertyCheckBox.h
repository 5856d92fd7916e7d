#pragma once

#include "base/settings/Settings.h"
#include "foundation/CallbackLifetime.h"
#include "gui/components/PassToMainThreadMixin.h"
#include "gui/components/TooltipMixin.h"
#include "gui/widgets/CheckBox.h"

namespace tavrin::components {

/// A check box between two values of one property of the settings: it writes the one that the user
/// chooses, and follows what anybody else writes, from whatever thread. The settings outlive it.
class PropertyCheckBox final : public PassToMainThreadMixin<TooltipMixin<widgets::CheckBox>>,
                               private CallbacksOwner {
public:
    /// Any value but `checkedValue` shows as not checked. The value comes with the next events.
    PropertyCheckBox(wxWindow* parent, settings::Settings& settings, int id, const String& label,
                     postcore::Property checkedValue, postcore::Property uncheckedValue);
    ~PropertyCheckBox() override { endCallbacks(); }

    bool Enable(bool enable = true) override;

private:
    void bindAll();
    void follow(const postcore::Property& value);

    settings::Settings& settings_;
    const int id_;
    const postcore::Property checkedValue_;
    const postcore::Property uncheckedValue_;
};

}  // namespace tavrin::components
