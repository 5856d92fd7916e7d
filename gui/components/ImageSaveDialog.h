#pragma once

#include "foundation/Optional.h"
#include "services/imageio/ImageFormat.h"
#include "services/imageio/ImageSaveSettings.h"

#include <map>

class wxWindow;

namespace tavrin::components {

/// Knows what the choices about each format of pictures start with. Main thread.
class IDefaultsProvider {
public:
    virtual ~IDefaultsProvider() = default;
    /// Nothing stands for the format's own defaults.
    virtual Optional<imageio::ImageSaveSettings> getDefaults(imageio::ImageFormat format) const = 0;
    /// Called with what the user has confirmed.
    virtual void setDefaults(imageio::ImageFormat format,
                             const imageio::ImageSaveSettings& settings) = 0;
};

/// Remembers what was confirmed last for each format, for as long as it lives.
class SimpleSaveSettingsDefaultsProvider final : public IDefaultsProvider {
public:
    Optional<imageio::ImageSaveSettings> getDefaults(imageio::ImageFormat format) const override {
        const auto found = confirmed_.find(format);
        if (found == confirmed_.end()) {
            return {};
        }
        return found->second;
    }
    void setDefaults(imageio::ImageFormat format,
                     const imageio::ImageSaveSettings& settings) override {
        confirmed_[format] = settings;
    }

private:
    std::map<imageio::ImageFormat, imageio::ImageSaveSettings> confirmed_;
};

/// Asks in a modal dialog how a picture of the format is to be written. Answers just what the
/// format leaves open, or nothing when the user cancels. For a format that leaves nothing open it
/// answers at once. Main thread.
Optional<imageio::ImageSaveSettings> askForImageSaveSettings(wxWindow* parent,
                                                             imageio::ImageFormat format,
                                                             IDefaultsProvider& defaults);

}  // namespace tavrin::components
