// Texts of tone mappings: whatever is accepted reads back as the same pipeline and maps every
// colour to a finite one that is not negative.

#include "foundation/FatalError.h"
#include "services/colorkit/ColorMapping.h"
#include "services/colorkit/Pipeline.h"
#include "services/colorkit/PipelineText.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

namespace tavrin::colorkit {
namespace {

void require(bool condition, const char* reason) {
    if (!condition) {
        fatalError(reason);
    }
}

bool isDisplayable(float value) {
    return std::isfinite(value) && value >= 0.0f;
}

void checkText(const EntityHolder<IColorMappingOperator>& pipeline) {
    String error;
    const auto again = deserializePipelineFromString(serializePipelineToString(pipeline), error);
    require(error.isEmpty(), "The text of a pipeline is refused.");
    require(arePipelinesSame(pipeline, again), "The text of a pipeline gives another one.");
}

void checkMapping(const EntityHolder<IColorMappingOperator>& pipeline) {
    using Limits = std::numeric_limits<float>;
    std::array<Rgb, 7> row{{{0.0f, 0.18f, 1.0f, 1.0f},
                            {-1.0f, 1e-20f, 1e20f, 0.5f},
                            {Limits::max(), Limits::max(), Limits::max(), 0.0f},
                            {Limits::max(), 0.0f, 0.0f, 0.0f},
                            {0.0f, 0.0f, Limits::max(), 0.0f},
                            {Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN(), 1.0f},
                            {Limits::denorm_min(), Limits::min(), 4.0f, 1.0f}}};
    ColorMapping colorMapping;
    colorMapping.setPipeline(pipeline);
    const Pixel displaySize{static_cast<int>(row.size()), 1};
    colorMapping.createMappingOperator(colorMapping.getContext(), displaySize)->mapRow(row, {});
    for (const Rgb& pixel : row) {
        require(isDisplayable(pixel.r) && isDisplayable(pixel.g) && isDisplayable(pixel.b),
                "A mapped colour is negative or not finite.");
    }
}

}  // namespace
}  // namespace tavrin::colorkit

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tavrin;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    String error;
    const auto pipeline = colorkit::deserializePipelineFromString(String::fromUtf8(bytes), error);
    colorkit::require(pipeline.isEmpty() || error.isEmpty(), "There is a pipeline and an error.");
    if (error.isEmpty()) {
        colorkit::checkText(pipeline);
        colorkit::checkMapping(pipeline);
    }
    return 0;
}
