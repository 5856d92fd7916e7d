// The OpenEXR reader: any file is loaded or refused with a message that names it; what was loaded
// is valid, has metadata that can be used, and survives being saved.

#include "base/image/Exr.h"
#include "base/image/ExrInfo.h"
#include "foundation/Scheduler.h"

#include "fuzz/FuzzSupport.h"
#include "fuzz/ImageChecks.h"

using namespace tavrin;

static void checkSaved(const image::ChannelImage& image) {
    static const Path path = fuzz::getScratchFile("saved.exr");
    if (!image::ExrSaver().save(image, path)) {
        return;
    }
    const Result<image::ChannelImage> again = image::ExrLoader().load(path);
    fuzz::require(again.has_value(), "An image that was saved is refused.");
    fuzz::require(again->getChannels().size() == image.getChannels().size(),
                  "An image that was saved has other channels.");
}

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    // Decoding threads would only blur which input is to blame.
    Scheduler::setThreadCount(1);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Path path = fuzz::getScratchFile("image.exr");
    fuzz::writeFile(path, data, size);

    if (const Result<image::ExrInfo> info = image::readExrInfo(path)) {
        fuzz::checkMetadata(info->image);
    }
    const Result<image::ChannelImage> image = image::ExrLoader().load(path);
    if (!image) {
        fuzz::require(image.error().contains(path.native()) && image.error().endsWith("."),
                      "A message does not name the file.");
        return 0;
    }
    fuzz::require(image->isValid(), "An invalid image is loaded.");
    checkSaved(*image);
    return 0;
}
