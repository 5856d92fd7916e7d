#pragma once

#include "base/image/ChannelImage.h"
#include "foundation/Bitmap.h"
#include "foundation/Color.h"
#include "foundation/SharedPtr.h"
#include "services/colorkit/ColorMapping.h"
#include "services/colorkit/Spectrum.h"
#include "services/postcore/ISettings.h"
#include "services/postcore/sharpening/Sharpening.h"

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace tavrin::bench {

/// What the display chain does to the beauty or to a mix of lights, one piece after the other
/// without operators, with the times of the pieces.
class DisplayPieces {
public:
    /// A light and what it is multiplied by.
    struct Light {
        String element;
        colorkit::Spectrum factors;
    };

    DisplayPieces(SharedPtr<const image::ChannelImage> image, const postcore::ISettings& settings,
                  const colorkit::ColorMapping& colorMapping);

    /// From now on the mix of these lights, at full resolution, takes the place of the beauty.
    void setLights(std::vector<Light> lights) { lights_ = std::move(lights); }

    /// A region at a scale as in IOperator::Request.
    BitmapImpl<Rgb> show(const Bucket& region, float viewScale);

    /// Gives the median time of each piece as a counter.
    void report(benchmark::State& state) const;

private:
    BitmapImpl<Rgb> getColors(const Bucket& region, float scale) const;
    BitmapImpl<Rgb> mixLights(const Bucket& region) const;
    template <class Work>
    void time(const char* counter, const Work& work);

    SharedPtr<const image::ChannelImage> image_;
    std::vector<Light> lights_;
    SharedPtr<const colorkit::ColorMappingOperator<0>> mapping_;
    postcore::Sharpening sharpening_;
    std::map<std::string, std::vector<double>> times_;  // in seconds
};

}  // namespace tavrin::bench
