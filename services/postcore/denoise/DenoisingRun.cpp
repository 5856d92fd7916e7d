#include "services/postcore/denoise/DenoisingRun.h"

#include <algorithm>

namespace tavrin::postcore {

bool DenoisingRun::step(std::int64_t steps) {
    const std::int64_t done = doneSteps_ += steps;
    if (std::this_thread::get_id() == thread_ && progress_ && !isAborted_) {
        const double fraction = static_cast<double>(done) / static_cast<double>(totalSteps_);
        if (!progress_(static_cast<float>(std::min(fraction, 1.0)))) {
            isAborted_ = true;
        }
    }
    return !isAborted_;
}

void DenoisingRun::forEach(std::int64_t count, const Function<void(std::int64_t)>& body) {
    scheduler_.parallelFor(0, count, TaskPriority::Normal, [&](std::int64_t i) {
        if (step(0)) {
            body(i);
        }
    });
}

}  // namespace tavrin::postcore
