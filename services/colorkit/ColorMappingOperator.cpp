#include "services/colorkit/ColorMappingOperator.h"

#include "foundation/Scheduler.h"
#include "services/colorkit/DisplayEncoding.h"
#include "services/colorkit/Pipeline.h"
#include "services/colorkit/StageList.h"

#include <algorithm>
#include <cmath>

namespace tavrin::colorkit {
namespace {

double toFactor(float exposure) {
    constexpr float kLargest = 1e15f;
    return std::isfinite(exposure) && exposure >= 0.0f ? std::min(exposure, kLargest) : 1.0f;
}

void appendContextExposure(const CommonColorMappingContext& context, StageList& stages) {
    const double factor = toFactor(context.imageExposure) * toFactor(context.viewExposure);
    if (factor != 1.0) {
        stages.addMatrix(Matrix3::diagonal({factor, factor, factor}));
    }
}

void appendPipeline(const EntityHolder<IColorMappingOperator>& pipeline,
                    const MappingEnvironment& environment, StageList& stages) {
    for (const IColorMappingOperator* current : listOperators(pipeline)) {
        const OperatorValues& values = current->getValues();
        if (values.isEnabled()) {
            values.getDescriptor().appendStages(values, environment, stages);
        }
    }
}

}  // namespace

ColorMappingOperator<0>::ColorMappingOperator(const EntityHolder<IColorMappingOperator>& pipeline,
                                              bool isEnabled,
                                              const MappingEnvironment& environment) {
    StageList stages;
    if (isEnabled) {
        appendContextExposure(environment.context, stages);
        appendPipeline(pipeline, environment, stages);
    }
    appendDisplayEncoding(environment.context.displayGamma, stages);
    stages_ = stages.take();
}

void ColorMappingOperator<0>::mapRow(std::span<Rgb> row, const RowPosition& position) const {
    PixelBlock block;
    block.position = position;
    for (std::size_t first = 0; first < row.size(); first += PixelBlock::kCapacity) {
        const std::size_t count = std::min(PixelBlock::kCapacity, row.size() - first);
        const std::span<Rgb> pixels = row.subspan(first, count);
        block.firstIndex = first;
        loadBlock(pixels, block);
        for (const auto& stage : stages_) {
            stage->apply(block);
        }
        storeBlock(block, pixels);
    }
}

void ColorMappingOperator<0>::mapBitmap(BitmapImpl<Rgb>& bitmap, Pixel origin, float scale) const {
    const auto mapRowAt = [&](std::int64_t y) {
        const int offset = static_cast<int>(static_cast<double>(y) * double{scale});
        mapRow(bitmap.row(static_cast<int>(y)), {origin.x, origin.y + offset, scale});
    };
    const int height = bitmap.getHeight();
    if (height == 1) {
        mapRowAt(0);
    } else {
        Scheduler::defaultInstance().parallelFor(0, height, TaskPriority::Interactive, mapRowAt);
    }
}

}  // namespace tavrin::colorkit
