#pragma once

#include "foundation/Bitmap.h"
#include "foundation/Color.h"
#include "foundation/Flags.h"
#include "foundation/Geometry.h"
#include "foundation/PixelArray.h"
#include "services/postcore/bloomglare/BloomGlareData.h"
#include "services/postcore/bloomglare/BloomGlareProgress.h"
#include "services/postcore/bloomglare/GlarePsf.h"
#include "services/postcore/bloomglare/Highlights.h"
#include "services/postcore/bloomglare/PointSpreadFunction.h"
#include "services/postcore/sharpening/ImageOperators.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace tavrin::postcore {

/// Computes the layer of light that bloom and glare add to an image, as computeBloomAndGlare does,
/// and keeps what a next computation may need again: the bloom and the glare at intensity 1, so
/// that another intensity costs only adding them up, and the kernels that they come from, so that
/// other light does not cost making them. Kept are at most 24 bytes for each pixel of the image and
/// for each weight of a kernel; half as much or more is taken on top while computing. One thread at
/// a time.
class BloomGlareRenderer {
public:
    /// The number of steps that render() counts, whatever the image and what is kept.
    static int getTotalSteps(const BloomGlareData& bloomGlare);

    /// See computeBloomAndGlare.
    bool render(Flags<ImageOperatorsFlag> flags, BitmapImpl<CompressedRgb>& bitmap,
                const BloomGlareData& bloomGlare, BloomGlareProgress& progress);

    /// How many layers have been convolved since the renderer was made.
    int getConvolutionCount() const { return convolutionCount_; }

private:
    enum class Effect { Bloom, Glare };

    /// All that a kernel depends on. What the kind of effect leaves out has its default.
    struct KernelKey {
        Effect effect = Effect::Bloom;
        int radius = 0;
        bool isLegacy = false;
        GlareParams glare;
        ApertureParams aperture;

        friend bool operator==(const KernelKey&, const KernelKey&) = default;
    };

    /// All that a layer depends on.
    struct LayerKey {
        KernelKey kernel;
        std::uint64_t highlights = 0;
        Pixel imageSize;

        friend bool operator==(const LayerKey&, const LayerKey&) = default;
    };

    struct Kernel {
        KernelKey key;
        PointSpreadFunction psf;
    };

    /// Light at intensity 1, in units of the highlights, for the part of the image that it reaches.
    struct Layer {
        LayerKey key;
        Bucket bounds;
        std::array<PixelArray<float>, 3> planes;

        const float* row(std::size_t channel, int y) const;
    };

    static float getIntensity(Effect effect, const BloomGlareData& bloomGlare);
    static LayerKey makeKey(Effect effect, const Highlights& highlights,
                            const BloomGlareData& bloomGlare);
    static PointSpreadFunction makePsf(const KernelKey& key);
    /// Forgets what is of no use for these keys.
    void keepOnly(const std::vector<LayerKey>& keys);
    const Kernel& getKernel(const KernelKey& key);
    /// Adds a layer for each key; the keys differ only in what shapes their kernels. False when
    /// aborted, without any of them.
    bool convolve(Flags<ImageOperatorsFlag> flags, const Highlights& highlights,
                  const std::vector<LayerKey>& keys, BloomGlareProgress& progress);
    void addUp(Flags<ImageOperatorsFlag> flags, const BloomGlareData& bloomGlare, float unit,
               BitmapImpl<CompressedRgb>& bitmap) const;

    // At most one for each effect.
    std::vector<Kernel> kernels_;
    std::vector<Layer> layers_;
    int convolutionCount_ = 0;
};

}  // namespace tavrin::postcore
