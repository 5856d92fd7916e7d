#include "services/postcore/bloomglare/BloomGlare.h"

#include "services/postcore/bloomglare/BloomGlareRenderer.h"

namespace tavrin::postcore {

int getBloomGlareTotalSteps(const BloomGlareData& bloomGlare, const CameraData&) {
    return BloomGlareRenderer::getTotalSteps(bloomGlare);
}

bool computeBloomAndGlare(Flags<ImageOperatorsFlag> flags, BitmapImpl<CompressedRgb>& bitmap,
                          const BloomGlareData& bloomGlare, const CameraData&,
                          BloomGlareProgress& progress) {
    return BloomGlareRenderer().render(flags, bitmap, bloomGlare, progress);
}

}  // namespace tavrin::postcore
