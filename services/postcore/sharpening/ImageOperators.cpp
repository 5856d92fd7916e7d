#include "services/postcore/sharpening/ImageOperators.h"

#include "foundation/Scheduler.h"

#include <algorithm>

namespace tavrin::postcore {

BitmapImpl<Rgb> getSubBitmap(Flags<ImageOperatorsFlag> flags, const BitmapImpl<Rgb>& bitmap,
                             const Bucket& rectangle) {
    const Pixel size = bitmap.getSize();
    const Bucket part{std::max(rectangle.x0, 0), std::max(rectangle.y0, 0),
                      std::min(rectangle.x1, size.x), std::min(rectangle.y1, size.y)};
    if (part.isEmpty()) {
        return {};
    }
    BitmapImpl<Rgb> result(part.width(), part.height());
    const auto copyRows = [&](std::int64_t from, std::int64_t to) {
        for (int y = static_cast<int>(from); y < to; ++y) {
            const auto source = bitmap.row(part.y0 + y)
                                    .subspan(static_cast<std::size_t>(part.x0),
                                             static_cast<std::size_t>(part.width()));
            std::copy(source.begin(), source.end(), result.row(y).begin());
        }
    };
    if (flags.has(ImageOperatorsFlag::Parallel)) {
        constexpr int kPixelsPerTask = 65536;
        Scheduler::defaultInstance().parallelForRanges(0, part.height(),
                                                       kPixelsPerTask / part.width() + 1,
                                                       TaskPriority::Interactive, copyRows);
    } else {
        copyRows(0, part.height());
    }
    return result;
}

}  // namespace tavrin::postcore
