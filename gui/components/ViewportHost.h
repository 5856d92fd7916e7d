#pragma once

#include "gui/components/DisplayedImage.h"
#include "gui/components/IViewportHost.h"

#include <mutex>
#include <vector>

namespace tavrin::components {

/// Brings the canvas and the tools of the property sheet together. The displayed image outlives it.
class ViewportHost final : public INotifiableViewportHost {
public:
    explicit ViewportHost(DisplayedImage& image) : image_(image) {}

    void addViewport(IViewport& viewport) override;
    void removeViewport(IViewport& viewport) override;
    void beginInteraction(IViewport& viewport) override;
    void endInteraction(IViewport& viewport) override;
    Vec2 getImageSize() const override;
    std::vector<Histogram> getHistograms(const HistogramRequest& request) override;
    bool canInteract() const override { return true; }
    bool canMeasure() const override { return true; }
    Optional<float> getPixelValue(Vec2 position, ColorCurveChannel channel) const override;
    void selectStage(Optional<int> stage) override { image_.setMeasuredStage(stage); }

    void notifyRefresh() override;
    void notifyMoved(Vec2 position, Vec2 imageSize) override;
    void notifyPressed(Vec2 position) override;
    void notifyReleased(Vec2 position) override;
    bool cancelInteraction() override;
    bool isInteracting() const override;

private:
    /// Calls each viewport, but none that is removed meanwhile.
    template <class Notification>
    void notify(const Notification& notification);
    bool isRegistered(const IViewport* viewport) const;

    DisplayedImage& image_;
    // Recursive, as viewports remove themselves while they are told something.
    mutable std::recursive_mutex mutex_;
    // Guarded by mutex_.
    std::vector<IViewport*> viewports_;  ///< by address
    IViewport* interacting_ = nullptr;
    Vec2 imageSize_;
};

}  // namespace tavrin::components
