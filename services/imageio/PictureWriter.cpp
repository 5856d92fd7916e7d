#include "services/imageio/PictureWriter.h"

#include "foundation/Exception.h"
#include "foundation/platform/DynamicLibrary.h"

#include <filesystem>

namespace tavrin::imageio {
namespace {

/// Installed programs come first: a build tree has no folder of the installed name.
Path findModule() {
    const Path program = platform::getProgramFolder();
    const Path installed = program / TAVRIN_MODULE_FOLDER_INSTALLED / TAVRIN_MODULE_NAME;
    std::error_code error;
    if (std::filesystem::exists(installed.std(), error)) {
        return installed;
    }
    return program / TAVRIN_MODULE_FOLDER_BUILT / TAVRIN_MODULE_NAME;
}

WritePicture loadPictureWriter() {
    static const platform::DynamicLibrary module(findModule());
    return reinterpret_cast<WritePicture>(module.getSymbol(kWritePictureSymbol));
}

}  // namespace

Result<WritePicture> getPictureWriter() {
    try {
        static const WritePicture writer = loadPictureWriter();
        return writer;
    } catch (const Exception& exception) {
        return Failure(exception.message());
    }
}

}  // namespace tavrin::imageio
