// Settings files: whatever is taken fits its property and survives being written.

#include "base/settings/Settings.h"
#include "foundation/Exception.h"
#include "services/colorkit/ColorMapping.h"
#include "services/colorkit/Pipeline.h"
#include "services/postcore/Conf.h"
#include "services/postcore/PropertyDescriptor.h"

#include "fuzz/FuzzSupport.h"

using namespace tavrin;
using fuzz::require;

static bool acceptAll(int) {
    return true;
}

static void checkWritten(const settings::Settings& settings,
                         const postcore::ConfColorMapping& mapping) {
    static const Path path = fuzz::getScratchFile("written.tvpost");
    colorkit::ColorMapping colorMapping;
    if (mapping.pipeline) {
        colorMapping.setPipeline(*mapping.pipeline);
    }
    postcore::saveConfigWithColorMapping(settings, colorMapping, path, acceptAll);
    settings::Settings again;
    const postcore::ConfColorMapping mappingAgain = postcore::loadConfigWithColorMapping(
        path, again, acceptAll, [](const String&) { require(false, "A line is refused."); });
    for (const postcore::PropertyDescriptor& descriptor : postcore::PropertyDescriptor::list()) {
        require(again.get(descriptor.id) == settings.get(descriptor.id),
                "A value that was written is read as another one.");
    }
    require(mappingAgain.pipeline &&
                colorkit::arePipelinesSame(colorMapping.getPipeline(), *mappingAgain.pipeline),
            "A tone mapping that was written is read as another one.");
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Path path = fuzz::getScratchFile("read.tvpost");
    fuzz::writeFile(path, data, size);
    settings::Settings settings;
    postcore::ConfColorMapping mapping;
    try {
        mapping = postcore::loadConfigWithColorMapping(path, settings, acceptAll);
    } catch (const Exception&) {
        return 0;
    }
    settings.validateAll();
    checkWritten(settings, mapping);
    return 0;
}
