#include "cli/AperturePictures.h"

#include "base/image/ImageIterators.h"
#include "foundation/Exception.h"
#include "services/imageio/SaveImage.h"
#include "services/postcore/PostProcessData.h"
#include "services/postcore/bloomglare/ApertureMask.h"
#include "services/postcore/bloomglare/GlarePsf.h"
#include "services/postcore/bloomglare/LegacyPsf.h"

#include <algorithm>
#include <cmath>

namespace tavrin::cli {
namespace {

constexpr int kMaskSize = 1024;
constexpr int kRadius = 512;
// Black is so many decades below the brightest weight.
constexpr float kDecades = 6.0f;

BitmapImpl<Rgb> toPicture(const BitmapImpl<float>& mask) {
    BitmapImpl<Rgb> picture(mask.getWidth(), mask.getHeight());
    std::ranges::transform(mask.pixels(), picture.pixels().begin(), [](float value) {
        return Rgb{value, value, value, 1.0f};
    });
    return picture;
}

/// The colours stay: all channels are scaled alike, by what the logarithm makes of the largest.
BitmapImpl<Rgb> toPicture(const postcore::PointSpreadFunction& function) {
    const auto& [red, green, blue] = function.planes;
    float brightest = 0.0f;
    for (const auto& plane : function.planes) {
        brightest = std::max(brightest, *std::ranges::max_element(plane));
    }
    BitmapImpl<Rgb> picture(function.getSize(), function.getSize());
    for (std::size_t i = 0; i < red.size(); ++i) {
        const float largest = std::max({red[i], green[i], blue[i]});
        const float decades = largest > 0.0f ? std::log10(largest / brightest) : -kDecades;
        const float scale =
            largest > 0.0f ? std::max(1.0f + decades / kDecades, 0.0f) / largest : 0.0f;
        picture.pixels()[i] = {red[i] * scale, green[i] * scale, blue[i] * scale, 1.0f};
    }
    return picture;
}

void save(const Path& path, const BitmapImpl<Rgb>& picture, ProgressLine& progress) {
    const TaskProgress step = progress.start("Saving \"" + path.native() + "\"");
    const image::RgbImageIterator<0> pixels(picture, nullptr);
    const auto saved = imageio::saveImage(path, pixels, true, {}, {}, step);
    if (!saved) {
        throw Exception(saved.error());
    }
}

}  // namespace

Path getPointSpreadFunctionPath(const Path& path) {
    return path.withFileName(path.stem() + "_psf." + path.extension());
}

void saveAperturePictures(const Path& path, const settings::Settings& settings,
                          ProgressLine& progress) {
    const postcore::BloomGlareData data = postcore::getPostProcessData(settings).bloomGlare;
    const BitmapImpl<float> mask =
        data.aperture.isCustom ? postcore::drawApertureMask(data.aperture, kMaskSize)
                               : postcore::drawStreakMask(data.glare.streakCount, kMaskSize);
    save(path, toPicture(mask), progress);
    save(getPointSpreadFunctionPath(path),
         toPicture(data.legacy != 0 ? postcore::makeLegacyGlarePsf(data.glare, kRadius)
                                    : postcore::makeGlarePsf(data.glare, data.aperture, kRadius)),
         progress);
}

}  // namespace tavrin::cli
