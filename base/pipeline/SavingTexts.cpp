#include "base/pipeline/SavingTexts.h"

#include "foundation/Exception.h"

namespace tavrin::pipeline {

String makeSuccessMessage(const Path& path) {
    return "Image \"" + path.native() + "\" has been successfully saved.";
}

String makeRetrieveFailure(const image::ElementInfo& element) {
    return "Unable to retrieve output image data of the \"" + element.name + "\" render element.";
}

void throwOnFailure(const Result<void>& result) {
    if (!result) {
        throw Exception(result.error());
    }
}

}  // namespace tavrin::pipeline
