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
#include "services/postcore/sharpening/ImageOperators.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace tavrin::postcore {

/// Computes the layer of light that bloom and glare add to an image, as computeBloomAndGlare does,
/// and keeps what it has convolved: the bloom and the glare at intensity 1. They are used again as
/// long as nothing changes that they depend on, so that another intensity costs only adding them
/// up. What is kept takes at most 24 bytes for each pixel of the image. One thread at a time.
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

    /// All that a layer depends on. What does not count has its default.
    struct LayerKey {
        Effect effect = Effect::Bloom;
        std::uint64_t highlights = 0;
        Pixel imageSize;
        int radius = 0;
        bool isLegacy = false;
        GlareParams glare;
        ApertureParams aperture;

        friend bool operator==(const LayerKey&, const LayerKey&) = default;
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
    static PointSpreadFunction makeKernel(const LayerKey& key);
    /// A layer for each key; the keys differ only in what shapes their kernels. None when aborted.
    static std::vector<Layer> convolve(Flags<ImageOperatorsFlag> flags,
                                       const Highlights& highlights,
                                       const std::vector<LayerKey>& keys,
                                       BloomGlareProgress& progress);
    void addUp(Flags<ImageOperatorsFlag> flags, const BloomGlareData& bloomGlare, float unit,
               BitmapImpl<CompressedRgb>& bitmap) const;

    std::vector<Layer> layers_;  // at most one for each effect
    int convolutionCount_ = 0;
};

}  // namespace tavrin::postcore
