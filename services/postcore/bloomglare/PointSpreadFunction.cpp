#include "services/postcore/bloomglare/PointSpreadFunction.h"

#include "foundation/Function.h"
#include "foundation/Scheduler.h"

#include <cstdint>
#include <numeric>
#include <span>

namespace tavrin::postcore {
namespace {

/// The same on any number of threads: rows are summed up on their own first.
void scaleToSum1(std::span<float> plane, int size) {
    std::vector<double> sums(static_cast<std::size_t>(size));
    const auto getRow = [&](std::int64_t y) {
        return plane.subspan(static_cast<std::size_t>(y) * sums.size(), sums.size());
    };
    const auto forEachRow = [&](const Function<void(std::int64_t)>& body) {
        Scheduler::defaultInstance().parallelFor(0, size, TaskPriority::Normal, body);
    };
    forEachRow([&](std::int64_t y) {
        const auto row = getRow(y);
        sums[static_cast<std::size_t>(y)] = std::accumulate(row.begin(), row.end(), 0.0);
    });
    const double sum = std::accumulate(sums.begin(), sums.end(), 0.0);
    const double scale = sum > 0.0 ? 1.0 / sum : 0.0;
    forEachRow([&](std::int64_t y) {
        for (float& weight : getRow(y)) {
            weight = static_cast<float>(scale * double{weight});
        }
    });
}

}  // namespace

void normalize(PointSpreadFunction& function) {
    for (std::vector<float>& plane : function.planes) {
        plane[function.index(function.radius, function.radius)] = 0.0f;
        scaleToSum1(plane, function.getSize());
    }
}

}  // namespace tavrin::postcore
