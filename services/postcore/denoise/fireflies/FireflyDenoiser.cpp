#include "services/postcore/denoise/fireflies/FireflyDenoiser.h"

#include "services/postcore/denoise/DenoisingRun.h"
#include "services/postcore/denoise/GuideImage.h"
#include "services/postcore/denoise/fireflies/FireflyFilter.h"

namespace tavrin::postcore {
namespace {

// The part of the image's light that may go.
constexpr float kLargestLoss = 0.009f;

class FireflyDenoiser final : public IDenoiser {
public:
    FireflyDenoiser(Scheduler& scheduler, float sensitivity)
        : scheduler_(scheduler), sensitivity_(sensitivity) {}

    Optional<BitmapImpl<Rgb>> denoise(const BitmapImpl<Rgb>& color, const BitmapImpl<Rgb>& variance,
                                      const Progress& progress) override {
        if (color.getPixelCount() == 0) {
            return color;
        }
        DenoisingRun run(scheduler_, progress, color.getHeight());
        const PlaneImage before = makeGuide(color, &variance, kColorLimits, run);
        PlaneImage after = before;
        removeFireflies(after, {measureLevel(before), sensitivity_, kLargestLoss}, run);
        if (run.isAborted() || !run.step(0)) {
            return {};
        }
        BitmapImpl<Rgb> result = color;
        for (int y = 0; y < color.getHeight(); ++y) {
            for (int x = 0; x < color.getWidth(); ++x) {
                const Rgb pixel{after.row(0, y)[x], after.row(1, y)[x], after.row(2, y)[x],
                                color.at(x, y).a};
                const Rgb old{before.row(0, y)[x], before.row(1, y)[x], before.row(2, y)[x]};
                if (pixel != old || !isFinite(color.at(x, y))) {
                    result.at(x, y) = pixel;
                }
            }
        }
        return result;
    }

private:
    Scheduler& scheduler_;
    float sensitivity_;
};

}  // namespace

std::unique_ptr<IDenoiser> createFireflyDenoiser(Scheduler& scheduler, float sensitivity) {
    return std::make_unique<FireflyDenoiser>(scheduler, sensitivity);
}

}  // namespace tavrin::postcore
