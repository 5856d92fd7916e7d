#pragma once

#include "base/settings/Settings.h"
#include "gui/components/PassToMainThreadMixin.h"
#include "services/colorkit/ColorMapping.h"

#include <wx/panel.h>
#include <wx/scrolwin.h>

namespace tavrin::components {

/// A panel with what the user finishes an image by: the settings and, where it is given, the colour
/// mapping. Both outlive it.
class SettingsPanel : public PassToMainThreadMixin<wxPanel> {
public:
    SettingsPanel() = default;

    settings::Settings& getSettings() const { return *settings_; }
    /// Null when it was not given.
    colorkit::ColorMapping* getColorMapping() const { return colorMapping_; }

protected:
    /// The first thing that a panel does.
    void setSettings(settings::Settings& settings, colorkit::ColorMapping* colorMapping = nullptr) {
        settings_ = &settings;
        colorMapping_ = colorMapping;
    }

private:
    settings::Settings* settings_ = nullptr;
    colorkit::ColorMapping* colorMapping_ = nullptr;
};

/// One whose content may be higher than the panel.
using ScrolledSettingsPanel = wxScrolled<SettingsPanel>;

}  // namespace tavrin::components
