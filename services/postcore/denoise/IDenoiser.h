#pragma once

#include "foundation/Bitmap.h"
#include "foundation/Color.h"
#include "foundation/Function.h"
#include "foundation/Optional.h"
#include "foundation/Scheduler.h"
#include "foundation/String.h"
#include "services/postcore/denoise/DenoisingMode.h"

#include <memory>
#include <vector>

namespace tavrin::postcore {

/// Where a denoiser reports why it does not do what it was asked for.
class ILogger {
public:
    virtual ~ILogger() = default;
    /// What was asked for is not done.
    virtual void error(const String& text) = 0;
    /// It is done in another way.
    virtual void warning(const String& text) = 0;
};

/// A feature element over the image's data window.
struct DenoisingFeature {
    FeatureType type;
    BitmapImpl<Rgb> pixels;
    /// The variance of each pixel's mean, of the same size.
    Optional<BitmapImpl<Rgb>> variance;
};

/// What denoisers are guided by. All bitmaps have the size of those that are denoised.
struct DenoisingData {
    std::vector<DenoisingFeature> features;
    /// How strongly noise is filtered: 1 is the usual, 0 not at all, more blurs more.
    float sensitivity = 1.0f;
    /// The same for the removal of fireflies.
    float fireflySensitivity = 1.0f;
};

/// Where the neural network runs; the numbers never change. Without a back end for graphics cards
/// the processor takes its place.
enum class OidnBackend : int { Best = 0, Processor = 1, Gpu = 2 };

/// Removes noise from the render elements of one image. One thread at a time; it may be used from
/// another thread than the one that made it.
class IDenoiser {
public:
    /// Told the part that is done, 0 to 1; answers false to abort. Called at least twice a second
    /// on the thread that denoises.
    using Progress = Function<bool(float fraction)>;

    virtual ~IDenoiser() = default;

    /// The element without noise, with the alpha it had; empty when aborted, or when something has
    /// been reported to the logger as an error. `variance` is that of each pixel's mean, of the
    /// same size. Pixels that are not finite, in any input, count as missing; the result is finite.
    /// Throws std::bad_alloc.
    virtual Optional<BitmapImpl<Rgb>> denoise(const BitmapImpl<Rgb>& color,
                                              const BitmapImpl<Rgb>& variance,
                                              const Progress& progress) = 0;
};

/// Whether what the mode needs beside the program itself is there.
bool isDenoiserInstalled(DenoisingMode mode);

/// A denoiser for the mode, which works on the scheduler's threads; null when there is none, which
/// is then reported as an error. The scheduler and the logger outlive it.
std::unique_ptr<IDenoiser> createDenoiser(DenoisingMode mode, Scheduler& scheduler, ILogger& logger,
                                          DenoisingData data, OidnBackend backend);

}  // namespace tavrin::postcore
