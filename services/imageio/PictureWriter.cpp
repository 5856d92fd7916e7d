#include "services/imageio/PictureWriter.h"

#include "foundation/Exception.h"
#include "foundation/platform/DynamicLibrary.h"

namespace tavrin::imageio {
namespace {

WritePicture loadPictureWriter() {
    static const platform::DynamicLibrary module(
        platform::findModule("tavrin-imageio-openimageio"));
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
