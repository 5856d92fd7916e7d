#pragma once

#include "gui/components/ColorMappingModel.h"
#include "gui/components/PropertySheetHost.h"
#include "gui/components/SettingsPanel.h"

namespace tavrin::components {

/// The side panel by which an image is finished: the property sheet of its tone mapping.
class PostprocessPanel final : public ScrolledSettingsPanel {
public:
    /// The host serves the sheet.
    PostprocessPanel(wxWindow* parent, settings::Settings& settings,
                     colorkit::ColorMapping& colorMapping, SharedPtr<PropertySheetHost> host);

    bool Enable(bool enable = true) override;

private:
    void createColorMappingPanel(SharedPtr<PropertySheetHost> host);
    void followSheet();

    ColorMappingModel toneMapping_;
    wxWindow* sheet_ = nullptr;
};

}  // namespace tavrin::components
