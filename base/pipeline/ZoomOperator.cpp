#include "base/pipeline/ZoomOperator.h"

#include "base/image/RegionSampling.h"

#include <algorithm>

namespace tavrin::pipeline {
namespace {

template <class T>
BitmapImpl<T> repeatPixels(const BitmapImpl<T>& source, int repeats) {
    BitmapImpl<T> result(source.getWidth() * repeats, source.getHeight() * repeats);
    image::forEachRow(result.getSize(), [&](int y) {
        const std::span<const T> from = source.row(y / repeats);
        T* to = result.row(y).data();
        for (const T& pixel : from) {
            to = std::fill_n(to, repeats, pixel);
        }
    });
    return result;
}

IOperator::Request atFullResolution(IOperator::Request request) {
    request.scale = 1.0f;
    return request;
}

}  // namespace

Optional<BitmapImpl<Rgb>> ZoomOperator::computeRgbRegion(const Request& request) {
    if (request.scale >= 1.0f) {
        return requestRgb(request);
    }
    const auto pixels = requestRgb(atFullResolution(request));
    return pixels
               ? Optional<BitmapImpl<Rgb>>(repeatPixels(*pixels, image::getRepeats(request.scale)))
               : std::nullopt;
}

Optional<BitmapImpl<float>> ZoomOperator::computeMonoRegion(const Request& request) {
    if (request.scale >= 1.0f) {
        return requestMono(request);
    }
    const auto values = requestMono(atFullResolution(request));
    return values ? Optional<BitmapImpl<float>>(
                        repeatPixels(*values, image::getRepeats(request.scale)))
                  : std::nullopt;
}

}  // namespace tavrin::pipeline
