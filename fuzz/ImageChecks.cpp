#include "fuzz/ImageChecks.h"

#include "base/image/ImageSettings.h"
#include "base/settings/PropertyHelp.h"
#include "base/settings/Settings.h"
#include "foundation/Exception.h"
#include "services/colorkit/ColorMapping.h"
#include "services/colorkit/Pipeline.h"

#include "fuzz/FuzzSupport.h"

namespace tavrin::fuzz {
namespace {

using image::ChannelImage;

struct Look {
    settings::Settings settings;
    colorkit::ColorMapping colorMapping;
    int warnings = 0;

    explicit Look(const ChannelImage& image) {
        image::readSettings(image, settings::allPropertyIds(), settings, colorMapping,
                            [this](const String&) { ++warnings; });
    }
};

void checkSettings(const ChannelImage& image) {
    const Look look(image);
    ChannelImage copy;
    image::writeSettings(copy, settings::allPropertyIds(), look.settings, look.colorMapping);
    const Look again(copy);
    require(again.warnings == 0, "Settings that were written are read with a warning.");
    for (const int id : settings::allPropertyIds()) {
        require(again.settings.get(id) == look.settings.get(id),
                "A setting that was written is read as another one.");
    }
    require(colorkit::arePipelinesSame(look.colorMapping.getPipeline(),
                                       again.colorMapping.getPipeline()) &&
                look.colorMapping.isEnabled() == again.colorMapping.isEnabled(),
            "A tone mapping that was written is read as another one.");
}

void checkElements(const ChannelImage& image) try {
    const auto infos = image.getRenderElementInfos();
    ChannelImage copy;
    copy.setRenderElementInfos(infos);
    require(copy.getRenderElementInfos() == infos,
            "A description of the elements that was written is read as another one.");
    for (const image::ElementInfo& element : image.getElements()) {
        static_cast<void>(image::findMatchingElementCoreInfo(infos, element));
    }
} catch (const Exception&) {
    // Broken metadata are told to whoever asks for the elements.
}

}  // namespace

void checkMetadata(const ChannelImage& image) {
    checkSettings(image);
    static_cast<void>(image::readCameraData(image));
    checkElements(image);
}

}  // namespace tavrin::fuzz
