#include "gui/components/PropertySheetHost.h"

#include "gui/components/ApplicationTitle.h"
#include "gui/widgets/DelayedCallback.h"
#include "gui/widgets/FileDialogs.h"
#include "gui/widgets/MessageDialog.h"

#include <array>
#include <utility>

namespace tavrin::components {
namespace {

constexpr int kHistogramDelay = 120;  // milliseconds
constexpr Range<float> kStops = {-8.0f, 6.0f};
constexpr int kBinCount = 128;
const std::vector<ColorCurveChannel> kColors = {ColorCurveChannel::Red, ColorCurveChannel::Green,
                                                ColorCurveChannel::Blue};

/// Calls its function when the displayed image has changed and then stays for a moment: counting
/// all of its pixels takes longer than showing some of them.
class HistogramViewport final : public IViewport {
public:
    explicit HistogramViewport(Function<void()> observer) : observer_(std::move(observer)) {}
    void refresh() override { observer_.scheduleDelayed(kHistogramDelay); }

private:
    widgets::DelayedCallback observer_;
};

/// Takes the next pixel that is clicked.
class ColorPick final : public IViewport {
public:
    using OnPicked = Function<void(const Optional<CompressedRgb>&)>;

    ColorPick(IViewportHost& host, int operatorId, OnPicked onPicked)
        : host_(host), operatorId_(operatorId), onPicked_(std::move(onPicked)) {}

    void onMousePressed(Vec2 position) override {
        if (!onPicked_) {
            return;
        }
        host_.selectStage(operatorId_);
        std::array<float, 3> color{};
        for (std::size_t i = 0; i < color.size(); ++i) {
            const Optional<float> value = host_.getPixelValue(position, kColors[i]);
            if (!value) {
                return;
            }
            color[i] = *value;
        }
        picked_ = CompressedRgb{color[0], color[1], color[2]};
        host_.endInteraction(*this);
    }
    void onInteractionEnded() override {
        // A copy, as the function may end this object.
        const OnPicked onPicked = std::exchange(onPicked_, {});
        const Optional<CompressedRgb> picked = picked_;
        if (onPicked) {
            onPicked(picked);
        }
    }
    /// The one who asked wants nothing any more.
    void forget() { onPicked_ = {}; }

private:
    IViewportHost& host_;
    int operatorId_;
    OnPicked onPicked_;
    Optional<CompressedRgb> picked_;
};

String makeFilter(const String& extension) {
    const String all = "All files|*";
    return extension.isEmpty() ? all : widgets::makeFileFilter("Files", {extension}) + "|" + all;
}

}  // namespace

Optional<Path> PropertySheetHost::chooseFile(const String& title, const Path& current,
                                             const String& extension) {
    return widgets::askForFileToOpen(window_, title, makeFilter(extension), current.parent());
}

Optional<sheet::StopHistogram> PropertySheetHost::getHistogram(int operatorId) {
    if (!viewportHost_ || operatorId <= 0 || viewportHost_->getImageSize() == Vec2()) {
        return std::nullopt;
    }
    const std::vector<Histogram> counted = viewportHost_->getHistograms(
        {kStops, HistogramScale::Stops, kColors, kBinCount, operatorId});
    sheet::StopHistogram histogram{kStops.minimum, kStops.maximum, {}};
    for (std::size_t i = 0; i < counted.size(); ++i) {
        histogram.counts[i].assign(counted[i].counts.begin(), counted[i].counts.end());
    }
    return histogram;
}

CallbackLifetime PropertySheetHost::addHistogramObserver(Function<void()> observer) {
    if (!viewportHost_) {
        return {};
    }
    const auto viewport = std::make_shared<HistogramViewport>(std::move(observer));
    viewportHost_->addViewport(*viewport);
    return CallbackLifetime([viewport, host = std::weak_ptr(viewportHost_)] {
        if (const auto still = host.lock()) {
            still->removeViewport(*viewport);
        }
    });
}

bool PropertySheetHost::canPickColor() const {
    return viewportHost_ && viewportHost_->canInteract() && viewportHost_->canMeasure();
}

CallbackLifetime PropertySheetHost::pickColor(
    int operatorId, Function<void(const Optional<CompressedRgb>&)> onPicked) {
    if (!viewportHost_) {
        return {};
    }
    const auto pick = std::make_shared<ColorPick>(*viewportHost_, operatorId, std::move(onPicked));
    viewportHost_->addViewport(*pick);
    viewportHost_->beginInteraction(*pick);
    return CallbackLifetime([pick, host = std::weak_ptr(viewportHost_)] {
        pick->forget();
        if (const auto still = host.lock()) {
            still->removeViewport(*pick);
        }
    });
}

void PropertySheetHost::showError(const String& message) {
    widgets::showMessage(window_, kApplicationTitle, message, widgets::MessageIcon::Error);
}

}  // namespace tavrin::components
