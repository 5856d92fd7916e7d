#include "gui/components/ColorMappingModel.h"
#include "gui/components/PropertySheetHost.h"
#include "gui/components/ViewportHost.h"
#include "services/colorkit/Pipeline.h"
#include "services/colorkit/editing/PipelineData.h"
#include "tests/base/pipeline/TestChain.h"
#include "tests/gui/Gui.h"
#include "tests/support/RegisteredTypes.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <numeric>
#include <string>
#include <thread>

namespace tavrin::components {
namespace {

using colorkit::ColorMappingWithObservers;
using Data = ColorMappingWithObservers::Data;

constexpr Bucket kWindow{0, 0, 40, 30};

TEST(Histogram, CountsByChannelAndScale) {
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    const std::vector<Rgb> pixels = {{0.5f, 0.0f, 0.18f, 1.0f},
                                     {1.0f, 0.36f, 0.09f, 1.0f},
                                     {-0.1f, 0.72f, 0.0f, 1.0f},
                                     {kNan, -1.0f, 5.0f, 1.0f},
                                     {0.25f, 0.1f, 0.1f, 1.0f}};
    using Counts = std::vector<std::uint64_t>;
    const HistogramRequest linear = {
        {0.0f, 1.0f}, HistogramScale::Linear, {ColorCurveChannel::Red}, 4, {}};
    const HistogramRequest stops = {{-2.0f, 2.0f},
                                    HistogramScale::Stops,
                                    {ColorCurveChannel::Blue, ColorCurveChannel::Green},
                                    4,
                                    {}};
    // As few as a remainder, and enough for vectors and for several runs of them.
    for (const std::uint64_t copies : {1, 300}) {
        std::vector<Rgb> many;
        for (std::uint64_t i = 0; i < copies; ++i) {
            many.insert(many.end(), pixels.begin(), pixels.end());
        }
        auto counted = makeEmptyHistograms(linear);
        count(linear, many, counted);
        EXPECT_EQ(counted.at(0).counts, (Counts{0, copies, copies, 0}));
        counted = makeEmptyHistograms(stops);
        count(stops, many, counted);
        EXPECT_EQ(counted.at(0).counts, (Counts{0, 2 * copies, copies, 0}));
        EXPECT_EQ(counted.at(1).counts, (Counts{0, copies, 0, copies}));
    }
    EXPECT_FLOAT_EQ(getChannel({0.1f, 0.2f, 0.6f, 9.0f}, ColorCurveChannel::Average), 0.3f);
}

class Recorder final : public IViewport {
public:
    void refresh() override { told += "R"; }
    void onMouseMoved(Vec2) override { told += "m"; }
    void onMousePressed(Vec2 position) override {
        told += "p";
        pressed = position;
        if (host != nullptr) {
            host->removeViewport(*this);
        }
    }
    void onMouseReleased(Vec2) override { told += "r"; }
    void onMouseReleased() override { told += "."; }
    void onInteractionBegun() override { told += "["; }
    void onInteractionEnded() override { told += "]"; }

    IViewportHost* host = nullptr;
    std::string told;
    Vec2 pressed;
};

class ViewportHostTest : public testing::Test {
protected:
    void SetUp() override {
        test_.setFile("a", [] { return pipeline::makeRender(kWindow, 7); });
        ASSERT_EQ(test_.load({"a"}), "");
        sheetHost_.setViewportHost(viewports_);
    }

    int getOperatorId(std::size_t index) const {
        return colorkit::listOperators(test_.colorMapping.getPipeline()).at(index)->getId();
    }

    tests::RegisteredTypes types_;
    pipeline::TestChain test_;
    DisplayedImage image_{test_.chain};
    SharedPtr<ViewportHost> viewports_ = std::make_shared<ViewportHost>(image_);
    PropertySheetHost sheetHost_;
};

TEST_F(ViewportHostTest, TellsViewportsUntilTheyAreRemoved) {
    Recorder first;
    Recorder second;
    for (IViewport* viewport : {&first, &second, &first}) {
        viewports_->addViewport(*viewport);
    }
    first.host = viewports_.get();
    viewports_->beginInteraction(first);
    viewports_->beginInteraction(second);
    EXPECT_TRUE(viewports_->isInteracting());
    viewports_->notifyMoved({1, 2}, {40, 30});
    viewports_->notifyPressed({3, 4});
    viewports_->notifyReleased({3, 4});
    viewports_->notifyRefresh();
    EXPECT_TRUE(viewports_->cancelInteraction());
    EXPECT_FALSE(viewports_->cancelInteraction());
    viewports_->removeViewport(second);
    viewports_->notifyRefresh();
    EXPECT_EQ(first.told, "[]mp");
    EXPECT_EQ(second.told, "[mpr.R]");
    EXPECT_EQ(second.pressed, (Vec2{3, 4}));
}

TEST_F(ViewportHostTest, OtherThreadsSeeTheSizeOfTheLastMove) {
    EXPECT_EQ(viewports_->getImageSize(), (Vec2{40, 30}));
    const auto ask = [this] {
        Vec2 size;
        std::thread([&] { size = viewports_->getImageSize(); }).join();
        return size;
    };
    EXPECT_EQ(ask(), Vec2());
    viewports_->notifyMoved({0, 0}, {12, 34});
    EXPECT_EQ(ask(), (Vec2{12, 34}));

    // Registrations from several threads while the window tells what happens.
    std::atomic<bool> isEnding = false;
    std::thread other([&] {
        while (!isEnding) {
            Recorder viewport;
            viewports_->addViewport(viewport);
            viewports_->removeViewport(viewport);
        }
    });
    for (int i = 0; i < 2000; ++i) {
        viewports_->notifyMoved({1, 1}, {2, 2});
    }
    isEnding = true;
    other.join();
}

TEST_F(ViewportHostTest, MeasuresWhatEntersAnOperator) {
    const auto before = test_.chain.includeAlpha.provideRgbRegion("", {5, 6, 6, 7}, 1.0f);
    viewports_->selectStage(getOperatorId(0));
    EXPECT_FLOAT_EQ(*viewports_->getPixelValue({5.9f, 6.0f}, ColorCurveChannel::Green),
                    before->at(0, 0).g);
    for (const Vec2 outside : {Vec2{40.0f, 1.0f}, Vec2{-0.1f, 1.0f}, Vec2{NAN, 1.0f}}) {
        EXPECT_FALSE(viewports_->getPixelValue(outside, ColorCurveChannel::Red));
    }
    // Values of 0 to 2: all are within the stops, but for the darkest.
    const auto histogram = sheetHost_.getHistogram(getOperatorId(0));
    ASSERT_TRUE(histogram);
    for (const auto& counts : histogram->counts) {
        EXPECT_NEAR(std::accumulate(counts.begin(), counts.end(), 0.0f), 40.0f * 30.0f, 5.0f);
    }
    EXPECT_FALSE(sheetHost_.getHistogram(0));
}

TEST_F(ViewportHostTest, PicksTheNextPixelThatIsClicked) {
    using Picked = Optional<CompressedRgb>;
    std::vector<Picked> picked;
    const auto onPicked = [&](const Picked& color) { picked.push_back(color); };
    auto picking = sheetHost_.pickColor(getOperatorId(0), onPicked);
    EXPECT_TRUE(viewports_->isInteracting());
    viewports_->notifyPressed({100, 100});
    EXPECT_TRUE(picked.empty());
    viewports_->notifyPressed({5, 6});
    viewports_->notifyPressed({7, 8});
    ASSERT_EQ(picked.size(), 1u);
    const Rgb expected =
        test_.chain.includeAlpha.provideRgbRegion("", {5, 6, 6, 7}, 1.0f)->at(0, 0);
    EXPECT_EQ(picked[0], (CompressedRgb{expected.r, expected.g, expected.b}));
    EXPECT_FALSE(viewports_->isInteracting());

    picking = sheetHost_.pickColor(getOperatorId(0), onPicked);
    viewports_->cancelInteraction();
    ASSERT_EQ(picked.size(), 2u);
    EXPECT_FALSE(picked[1]);

    picking = sheetHost_.pickColor(getOperatorId(0), onPicked);
    picking = CallbackLifetime();
    EXPECT_FALSE(viewports_->isInteracting());
    picking = sheetHost_.pickColor(getOperatorId(0), onPicked);
    sheetHost_.setViewportHost(nullptr);
    viewports_.reset();
    picking = CallbackLifetime();
    EXPECT_EQ(picked.size(), 2u);
}

TEST_F(ViewportHostTest, HistogramsFollowOnceTheImageStays) {
    int calls = 0;
    auto observer = sheetHost_.addHistogramObserver([&] { ++calls; });
    for (int i = 0; i < 5; ++i) {
        viewports_->notifyRefresh();
    }
    EXPECT_EQ(calls, 0);
    EXPECT_TRUE(tests::waitFor([&] { return calls > 0; }));
    EXPECT_EQ(calls, 1);
    viewports_->notifyRefresh();
    observer = CallbackLifetime();
    wxMilliSleep(200);
    tests::handleEvents();
    EXPECT_EQ(calls, 1);
}

TEST_F(ViewportHostTest, ModelAndColorMappingFollowEachOther) {
    // As events of a window: they wait until the test lets them run.
    std::vector<Function<void()>> queue;
    std::mutex mutex;
    const auto runQueue = [&] {
        for (const auto& function : std::exchange(queue, {})) {
            function();
        }
    };
    const ColorMappingModel model(test_.colorMapping, [&](Function<void()> function) {
        return [&, function = std::move(function)] {
            const std::lock_guard lock(mutex);
            queue.push_back(function);
        };
    });
    ColorMappingWithObservers& entity = *model.getEntity();
    const auto getList = [&] { return entity.getData().get<GenericList>(Data::kToneMapping); };
    const auto getShared = [&] {
        return convertPipelineToDataObjects(test_.colorMapping.getPipeline(),
                                            colorkit::HiddenItems::Include);
    };
    EXPECT_FALSE(getList().empty());
    EXPECT_TRUE(colorkit::areOperatorsDataSame(getList(), getShared()));

    entity.modify<GenericList>(Data::kToneMapping, [](GenericList& list) {
        list.pop_back();
        list.front().set("enabled", false);
    });
    entity.set(Data::kEnabled, false);
    EXPECT_TRUE(colorkit::areOperatorsDataSame(getList(), getShared()));
    EXPECT_FALSE(test_.colorMapping.isEnabled());
    const auto pipeline = test_.colorMapping.getPipeline();
    // More than a pipeline takes.
    EXPECT_THROW(entity.modify<GenericList>(
                     Data::kToneMapping,
                     [](GenericList& list) { list.resize(65, GenericObject(list.front())); }),
                 Exception);
    EXPECT_TRUE(colorkit::areOperatorsDataSame(getList(), getShared()));
    runQueue();
    EXPECT_EQ(test_.colorMapping.getPipeline(), pipeline);

    std::thread([&] {
        test_.colorMapping.setPipeline({});
        test_.colorMapping.setEnabled(true);
    }).join();
    EXPECT_FALSE(getList().empty());
    runQueue();
    EXPECT_TRUE(getList().empty());
    EXPECT_TRUE(entity.getData().get<bool>(Data::kEnabled));
    EXPECT_TRUE(test_.colorMapping.getPipeline().isEmpty());
}

}  // namespace
}  // namespace tavrin::components
