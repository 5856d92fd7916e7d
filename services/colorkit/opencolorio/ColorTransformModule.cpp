// The module's one exported function.

#include "services/colorkit/opencolorio/TransformFactory.h"

#include <exception>
#include <utility>

namespace OCIO = OCIO_NAMESPACE;

namespace tavrin::colorkit {
namespace {

class ColorTransform final : public IColorTransform {
public:
    explicit ColorTransform(OCIO::ConstCPUProcessorRcPtr processor)
        : processor_(std::move(processor)) {}

    // On packed floats in memory the library throws nothing.
    void apply(float* pixels, std::size_t count) const noexcept override {
        OCIO::PackedImageDesc row(pixels, static_cast<long>(count), 1, 4);
        processor_->apply(row);
    }

private:
    OCIO::ConstCPUProcessorRcPtr processor_;
};

}  // namespace

extern "C" __attribute__((visibility("default"))) const IColorTransform*
tavrinCreateColorTransform1(const ColorTransformRequest& request, std::string& reason) noexcept {
    try {
        // What goes wrong reaches the user as a sentence of ours.
        OCIO::SetLoggingLevel(OCIO::LOGGING_LEVEL_NONE);
        return new ColorTransform(makeProcessor(request));
    } catch (const std::exception& exception) {
        reason = exception.what();
        return nullptr;
    }
}

}  // namespace tavrin::colorkit
