#include "gui/components/ViewportHost.h"

#include <wx/thread.h>

#include <algorithm>
#include <functional>
#include <utility>

namespace tavrin::components {

bool ViewportHost::isRegistered(const IViewport* viewport) const {
    return std::ranges::binary_search(viewports_, viewport, std::less<const IViewport*>());
}

void ViewportHost::addViewport(IViewport& viewport) {
    const std::lock_guard lock(mutex_);
    const auto place =
        std::ranges::lower_bound(viewports_, &viewport, std::less<const IViewport*>());
    if (place == viewports_.end() || *place != &viewport) {
        viewports_.insert(place, &viewport);
    }
}

void ViewportHost::removeViewport(IViewport& viewport) {
    const std::lock_guard lock(mutex_);
    endInteraction(viewport);
    std::erase(viewports_, &viewport);
}

void ViewportHost::beginInteraction(IViewport& viewport) {
    const std::lock_guard lock(mutex_);
    cancelInteraction();
    interacting_ = &viewport;
    viewport.onInteractionBegun();
}

void ViewportHost::endInteraction(IViewport& viewport) {
    const std::lock_guard lock(mutex_);
    if (interacting_ == &viewport) {
        interacting_ = nullptr;
        viewport.onInteractionEnded();
    }
}

bool ViewportHost::cancelInteraction() {
    const std::lock_guard lock(mutex_);
    IViewport* const viewport = interacting_;
    if (viewport != nullptr) {
        endInteraction(*viewport);
    }
    return viewport != nullptr;
}

bool ViewportHost::isInteracting() const {
    const std::lock_guard lock(mutex_);
    return interacting_ != nullptr;
}

Vec2 ViewportHost::getImageSize() const {
    if (wxIsMainThread()) {
        const Pixel size = image_.getSize();
        return {static_cast<float>(size.x), static_cast<float>(size.y)};
    }
    const std::lock_guard lock(mutex_);
    return imageSize_;
}

std::vector<Histogram> ViewportHost::getHistograms(const HistogramRequest& request) {
    return image_.getHistograms(request);
}

Optional<float> ViewportHost::getPixelValue(Vec2 position, ColorCurveChannel channel) const {
    return image_.getPixelValue(position, channel);
}

template <class Notification>
void ViewportHost::notify(const Notification& notification) {
    const std::lock_guard lock(mutex_);
    for (IViewport* viewport : std::vector(viewports_)) {
        if (isRegistered(viewport)) {
            notification(*viewport);
        }
    }
}

void ViewportHost::notifyRefresh() {
    notify([](IViewport& viewport) { viewport.refresh(); });
}

void ViewportHost::notifyMoved(Vec2 position, Vec2 imageSize) {
    {
        const std::lock_guard lock(mutex_);
        imageSize_ = imageSize;
    }
    notify([position](IViewport& viewport) { viewport.onMouseMoved(position); });
}

void ViewportHost::notifyPressed(Vec2 position) {
    notify([position](IViewport& viewport) { viewport.onMousePressed(position); });
}

void ViewportHost::notifyReleased(Vec2 position) {
    notify([position](IViewport& viewport) { viewport.onMouseReleased(position); });
    notify([](IViewport& viewport) { viewport.onMouseReleased(); });
}

}  // namespace tavrin::components
