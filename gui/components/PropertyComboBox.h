#pragma once

#include "base/settings/Settings.h"
#include "foundation/CallbackLifetime.h"
#include "gui/components/PassToMainThreadMixin.h"
#include "gui/components/TooltipMixin.h"
#include "gui/widgets/ComboBox.h"

#include <vector>

namespace tavrin::components {

/// A choice among values of one property of the settings: it writes the one that the user chooses,
/// and follows what anybody else writes, from whatever thread. The settings outlive it.
class PropertyComboBox final : public PassToMainThreadMixin<TooltipMixin<widgets::ComboBox>>,
                               private CallbacksOwner {
public:
    /// Without items; it shows what the property becomes, not what it is. The width is in
    /// device-independent pixels.
    PropertyComboBox(wxWindow* parent, settings::Settings& settings, int id, int width);
    ~PropertyComboBox() override { endCallbacks(); }

    /// Item i stands for value i. The values are copied. None is selected afterwards.
    void setItems(const std::vector<postcore::Property>& values);
    /// Null when none is selected; valid until the next setItems.
    const postcore::Property* getSelectedValue() const;

    /// How items are called; the text of settings files without it. Before setItems.
    void setLabelFormatter(Function<String(const postcore::Property&)> formatter) {
        formatLabel_ = std::move(formatter);
    }
    /// Called when the property has changed to a value that no item has; the selection stays. Not
    /// called while such a callback of any combo box runs.
    void callOnUnknownValue(Function<void(int id, const postcore::Property&)> callback) {
        onUnknownValue_ = std::move(callback);
    }

    bool Enable(bool enable = true) override;

private:
    void bindAll();
    void follow();
    void write(int item);

    settings::Settings& settings_;
    const int id_;
    std::vector<postcore::Property> values_;
    Function<String(const postcore::Property&)> formatLabel_;
    Function<void(int, const postcore::Property&)> onUnknownValue_;
};

}  // namespace tavrin::components
