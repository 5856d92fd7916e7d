// The OpenEXR reader: any file is loaded or refused with a message that names it; what was loaded
// is valid, lists its elements, and survives being saved.

#include "base/image/Exr.h"
#include "base/image/ExrInfo.h"
#include "foundation/Exception.h"
#include "foundation/Scheduler.h"

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace {

using namespace tavrin;
using image::ChannelImage;

void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

/// A file of this process in memory-backed storage where there is some.
Path getScratchFile(const char* name) {
    const std::filesystem::path shared = "/dev/shm";
    const std::filesystem::path folder =
        std::filesystem::exists(shared) ? shared : std::filesystem::temp_directory_path();
    return Path(folder / ("tavrin-exr-fuzz-" + std::to_string(getpid()) + name));
}

void checkSaved(const ChannelImage& image) {
    const Path path = getScratchFile("-saved.exr");
    if (!image::ExrSaver().save(image, path)) {
        return;
    }
    const Result<ChannelImage> again = image::ExrLoader().load(path);
    require(again.has_value());
    require(again->getChannels().size() == image.getChannels().size());
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    // Decoding threads would only blur which input is to blame.
    Scheduler::setThreadCount(1);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Path path = getScratchFile(".exr");
    std::ofstream(path.std(), std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));

    static_cast<void>(image::readExrInfo(path));
    const Result<ChannelImage> image = image::ExrLoader().load(path);
    if (!image) {
        require(image.error().contains(path.native()) && image.error().endsWith("."));
        return 0;
    }
    require(image->isValid());
    try {
        static_cast<void>(image->getElements());
    } catch (const Exception&) {
        // Broken metadata are told to whoever asks for the elements.
    }
    checkSaved(*image);
    return 0;
}
