#pragma once

#include "foundation/Vec.h"
#include "gui/components/Histogram.h"

namespace tavrin::components {

/// A tool that shows something of the displayed image or picks from it. Told on the main thread; of
/// the end of its interaction, also on the thread that removes it.
class IViewport {
public:
    virtual ~IViewport() = default;

    /// What is displayed has changed.
    virtual void refresh() {}

    // What the mouse does on the image; positions are in pixels of it.
    virtual void onMouseMoved(Vec2) {}
    virtual void onMousePressed(Vec2) {}
    virtual void onMouseReleased(Vec2) {}
    /// Follows each release.
    virtual void onMouseReleased() {}

    /// The mouse is the viewport's from now on.
    virtual void onInteractionBegun() {}
    /// It is no more; also when the user gave up.
    virtual void onInteractionEnded() {}
};

/// The displayed image as its viewports see it. Main thread, where nothing else is said.
class IViewportHost {
public:
    virtual ~IViewportHost() = default;

    /// Tells the viewport from now on what happens; nothing when it is told already. Any thread.
    virtual void addViewport(IViewport& viewport) = 0;
    /// Ends its interaction and tells it nothing more; before the viewport ends. Any thread.
    virtual void removeViewport(IViewport& viewport) = 0;

    /// Gives the mouse to a viewport until the interaction is ended; one that has it loses it.
    virtual void beginInteraction(IViewport& viewport) = 0;
    virtual void endInteraction(IViewport& viewport) = 0;

    /// In pixels; off the main thread, as it was when the mouse last moved. Any thread.
    virtual Vec2 getImageSize() const = 0;
    virtual std::vector<Histogram> getHistograms(const HistogramRequest& request) = 0;
    /// Whether viewports may have the mouse.
    virtual bool canInteract() const = 0;
    /// Whether there are values and histograms.
    virtual bool canMeasure() const = 0;
    /// At a position in pixels, as last chosen by selectStage(); empty where there are no pixels.
    virtual Optional<float> getPixelValue(Vec2 position, ColorCurveChannel channel) const = 0;
    /// Chooses the operator of the tone mapping, by its id, whose input getPixelValue() tells.
    virtual void selectStage(Optional<int> stage) = 0;
};

/// Is told by the window what happens, and tells it to the viewports. Main thread.
class INotifiableViewportHost : public IViewportHost {
public:
    virtual void notifyRefresh() = 0;
    virtual void notifyMoved(Vec2 position, Vec2 imageSize) = 0;
    virtual void notifyPressed(Vec2 position) = 0;
    virtual void notifyReleased(Vec2 position) = 0;
    /// The user gave up what a viewport asked for; false when none did.
    virtual bool cancelInteraction() = 0;
    virtual bool isInteracting() const = 0;
};

}  // namespace tavrin::components
