#include "services/postcore/bloomglare/PointSpreadFunction.h"

#include "foundation/Function.h"
#include "foundation/Scheduler.h"

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <span>

namespace tavrin::postcore {
namespace {

// Parts of a plane are summed up on their own first, whatever the number of threads.
constexpr std::size_t kPartSize = 4096;

void forEachPart(std::span<float> plane,
                 const Function<void(std::size_t, std::span<float>)>& body) {
    const std::size_t count = (plane.size() + kPartSize - 1) / kPartSize;
    Scheduler::defaultInstance().parallelFor(
        0, static_cast<std::int64_t>(count), TaskPriority::Normal, [&](std::int64_t i) {
            const std::size_t begin = static_cast<std::size_t>(i) * kPartSize;
            body(static_cast<std::size_t>(i),
                 plane.subspan(begin, std::min(kPartSize, plane.size() - begin)));
        });
}

}  // namespace

void normalize(std::vector<float>& kernel) {
    kernel[kernel.size() / 2] = 0.0f;
    std::vector<double> sums(kernel.size() / kPartSize + 1);
    forEachPart(kernel, [&sums](std::size_t i, std::span<float> part) {
        sums[i] = std::reduce(part.begin(), part.end(), 0.0);
    });
    const double sum = std::accumulate(sums.begin(), sums.end(), 0.0);
    const auto scale = static_cast<float>(sum > 0.0 ? 1.0 / sum : 0.0);
    forEachPart(kernel, [scale](std::size_t, std::span<float> part) {
        for (float& weight : part) {
            weight *= scale;
        }
    });
}

}  // namespace tavrin::postcore
