#include "services/postcore/bloomglare/Fft.h"

#include "foundation/Exception.h"
#include "foundation/PixelArray.h"

#include <fftw3.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <mutex>
#include <new>

namespace tavrin::postcore {
namespace {

// The library's planner may run in one thread at a time; what it has planned in any number.
std::mutex plannerMutex;

struct PlanDeleter {
    void operator()(fftwf_plan plan) const {
        const std::lock_guard lock(plannerMutex);
        fftwf_destroy_plan(plan);
    }
};
using Plan = std::unique_ptr<std::remove_pointer_t<fftwf_plan>, PlanDeleter>;

// Plans that the planner has measured are faster, but take it up to seconds for each size, which is
// as long as the transforms of a dozen images.
constexpr unsigned kPlanning = FFTW_ESTIMATE;

template <class MakePlan>
Plan makePlan(const MakePlan& make) {
    const std::lock_guard lock(plannerMutex);
    Plan plan(make());
    if (!plan) {
        throw std::bad_alloc();
    }
    return plan;
}

fftwf_complex* toLibrary(Complex* values) {
    return reinterpret_cast<fftwf_complex*>(values);
}

bool isSmooth(int number) {
    for (const int factor : {2, 3, 5, 7}) {
        while (number % factor == 0) {
            number /= factor;
        }
    }
    return number == 1;
}

}  // namespace

int getFftSize(int least) {
    for (int size = std::max(least, 2); size < std::numeric_limits<int>::max() / 2; ++size) {
        if (size % 2 == 0 && isSmooth(size)) {
            return size;
        }
    }
    throw Exception("The image is too large for bloom and glare.");
}

struct RealRowFft::Plans {
    Plan forward;
    Plan inverse;
};

RealRowFft::RealRowFft(int size) : size_(size), plans_(std::make_unique<Plans>()) {
    PixelArray<Complex> row(static_cast<std::size_t>(getFrequencyCount()));
    auto* const values = toLibrary(row.data());
    auto* const reals = reinterpret_cast<float*>(row.data());
    plans_->forward =
        makePlan([&] { return fftwf_plan_dft_r2c_1d(size, reals, values, kPlanning); });
    plans_->inverse =
        makePlan([&] { return fftwf_plan_dft_c2r_1d(size, values, reals, kPlanning); });
}

RealRowFft::~RealRowFft() = default;

void RealRowFft::transformForward(Complex* row) const {
    fftwf_execute_dft_r2c(plans_->forward.get(), reinterpret_cast<float*>(row), toLibrary(row));
}

void RealRowFft::transformInverse(Complex* row) const {
    fftwf_execute_dft_c2r(plans_->inverse.get(), toLibrary(row), reinterpret_cast<float*>(row));
}

struct ColumnFft::Plans {
    Plan forward;
    Plan inverse;
};

ColumnFft::ColumnFft(int size) : plans_(std::make_unique<Plans>()) {
    PixelArray<Complex> block(static_cast<std::size_t>(size) * kFftColumns);
    auto* const values = toLibrary(block.data());
    const auto plan = [&](int sign) {
        return makePlan([&] {
            return fftwf_plan_many_dft(1, &size, kFftColumns, values, nullptr, kFftColumns, 1,
                                       values, nullptr, kFftColumns, 1, sign, kPlanning);
        });
    };
    plans_->forward = plan(FFTW_FORWARD);
    plans_->inverse = plan(FFTW_BACKWARD);
}

ColumnFft::~ColumnFft() = default;

void ColumnFft::transformForward(Complex* block) const {
    fftwf_execute_dft(plans_->forward.get(), toLibrary(block), toLibrary(block));
}

void ColumnFft::transformInverse(Complex* block) const {
    fftwf_execute_dft(plans_->inverse.get(), toLibrary(block), toLibrary(block));
}

}  // namespace tavrin::postcore
