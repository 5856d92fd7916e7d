#include "services/postcore/bloomglare/Fft.h"

#include "foundation/Exception.h"
#include "services/postcore/bloomglare/ComplexKernels.h"

#include <fftw3.h>

#include <algorithm>
#include <limits>
#include <mutex>
#include <new>
#include <numbers>
#include <type_traits>
#include <utility>

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

// Plans that the library has measured are faster, but making them takes up to seconds for each
// size, which is as long as the transforms of a dozen images.
constexpr unsigned kPlanning = FFTW_ESTIMATE | FFTW_DESTROY_INPUT;

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

// The library has straight code for transforms of this size.
constexpr int kLargestRadix = 16;

/// Looks for the fewest factors, none larger than the one before it nor than `largest`.
void findFewestFactors(int number, int largest, std::vector<int>& factors,
                       std::vector<int>& fewest) {
    if (number == 1) {
        fewest = factors;
        return;
    }
    for (int factor = std::min(largest, number); factor > 1; --factor) {
        if (number % factor == 0 && (fewest.empty() || factors.size() + 1 < fewest.size())) {
            factors.push_back(factor);
            findFewestFactors(number / factor, factor, factors, fewest);
            factors.pop_back();
        }
    }
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
    PixelArray<float> reals(static_cast<std::size_t>(size));
    PixelArray<Complex> frequencies(static_cast<std::size_t>(getFrequencyCount()));
    auto* const values = toLibrary(frequencies.data());
    plans_->forward =
        makePlan([&] { return fftwf_plan_dft_r2c_1d(size, reals.data(), values, kPlanning); });
    plans_->inverse =
        makePlan([&] { return fftwf_plan_dft_c2r_1d(size, values, reals.data(), kPlanning); });
}

RealRowFft::~RealRowFft() = default;

void RealRowFft::transformForward(float* reals, Complex* frequencies) const {
    fftwf_execute_dft_r2c(plans_->forward.get(), reals, toLibrary(frequencies));
}

void RealRowFft::transformInverse(Complex* frequencies, float* reals) const {
    fftwf_execute_dft_c2r(plans_->inverse.get(), toLibrary(frequencies), reals);
}

/// One pass over a block that transforms groups of `radix` values. With s the product of the
/// earlier radices and m the size that is left after this one, group p of m takes the values at
/// s (p + m j) + q and leaves them at s (radix p + k) + q, for q from 0 to s - 1, multiplied by
/// e^(∓2πi p k / (radix m)): the self-sorting transform of T. Stockham (C. Van Loan,
/// "Computational frameworks for the fast Fourier transform", 1992, section 1.7). The library does
/// such small transforms as well as can be, and chooses badly among large ones that it may not
/// measure.
struct ColumnFft::Stage {
    std::size_t radix = 0;
    std::size_t groupCount = 0;
    std::size_t groupSize = 0;  // values between those of a group: s rows of a block
    Plan plan;
    std::vector<Complex> factors;  // group by group
};

std::vector<ColumnFft::Stage> ColumnFft::makeStages(int size, bool isForward) {
    std::vector<int> factors;
    std::vector<int> radices;
    findFewestFactors(size, kLargestRadix, factors, radices);
    ColumnBlock block(size);
    std::vector<Stage> stages;
    int earlier = 1;
    for (const int radix : radices) {
        const int groupCount = size / earlier / radix;
        const int groupSize = earlier * kFftColumns;
        const fftwf_iodim step{radix, groupSize * groupCount, groupSize};
        const fftwf_iodim columns{groupSize, 1, 1};
        Stage stage{static_cast<std::size_t>(radix),
                    static_cast<std::size_t>(groupCount),
                    static_cast<std::size_t>(groupSize),
                    nullptr,
                    {}};
        stage.plan = makePlan([&] {
            return fftwf_plan_guru_dft(1, &step, 1, &columns, toLibrary(block.values_.data()),
                                       toLibrary(block.other_.data()),
                                       isForward ? FFTW_FORWARD : FFTW_BACKWARD, kPlanning);
        });
        const double turn = (isForward ? -2.0 : 2.0) * std::numbers::pi;
        for (int p = 0; p < groupCount; ++p) {
            for (int k = 0; k < radix; ++k) {
                const double part = static_cast<double>(p) * k / (radix * groupCount);
                stage.factors.emplace_back(std::polar(1.0, turn * part));
            }
        }
        stages.push_back(std::move(stage));
        earlier *= radix;
    }
    return stages;
}

ColumnFft::ColumnFft(int size)
    : forward_(makeStages(size, true)), inverse_(makeStages(size, false)) {}

ColumnFft::~ColumnFft() = default;

void ColumnFft::transform(const std::vector<Stage>& stages, ColumnBlock& block) {
    for (const Stage& stage : stages) {
        Complex* source = block.values_.data();
        Complex* result = block.other_.data();
        for (std::size_t p = 0; p < stage.groupCount; ++p) {
            fftwf_execute_dft(stage.plan.get(), toLibrary(source), toLibrary(result));
            if (p != 0) {
                multiplyRows(&stage.factors[p * stage.radix], stage.radix, stage.groupSize, result);
            }
            source += stage.groupSize;
            result += stage.groupSize * stage.radix;
        }
        std::swap(block.values_, block.other_);
    }
}

void ColumnFft::transformForward(ColumnBlock& block) const {
    transform(forward_, block);
}

void ColumnFft::transformInverse(ColumnBlock& block) const {
    transform(inverse_, block);
}

}  // namespace tavrin::postcore
