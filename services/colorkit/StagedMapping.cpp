#include "services/colorkit/StagedMapping.h"

#include "foundation/Scheduler.h"

#include <algorithm>
#include <cstdint>

namespace tavrin::colorkit {

void StagedMapping::mapRow(std::span<Rgb> row, const RowPosition& position) const {
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

void StagedMapping::mapBitmap(BitmapImpl<Rgb>& bitmap, Pixel origin, float scale) const {
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
