#include "base/pipeline/AsyncMixin.h"
#include "base/pipeline/DependentMixin.h"
#include "base/pipeline/ProgressMixin.h"
#include "tests/base/pipeline/TestChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <semaphore>

namespace tavrin::pipeline {
namespace {

using testing::ElementsAre;
using Control = IOperator::Control;

/// Answers with one pixel that counts the updates; an update may be held up, or fail.
class CountingOperator final : public AsyncMixin<ProgressMixin<IOperator>> {
public:
    ~CountingOperator() override {
        mayUpdate.release(100);
        shutDown();
    }

    void recompute() { run("Pipeline_CountingOperator"); }
    void recomputeAndWaitForStart() {
        recompute();
        started.acquire();
    }
    void computeSilently() {
        const SilentScope silent(*this);
        compute();
    }

    std::int64_t getRevision() const override { return 7; }
    std::vector<image::ElementInfo> getElements() const override { return {}; }
    Bucket getDisplayWindow() const override { return windowOf(1, 1); }
    Bucket getDataWindow() const override { return windowOf(2, 3); }

    std::counting_semaphore<> started{0};
    std::counting_semaphore<> mayUpdate{0};
    std::atomic<int> updates = 0;
    bool fails = false;

private:
    void update() override {
        started.release();
        mayUpdate.acquire();
        compute();
    }
    void compute() {
        computeWithProgress("Counting progress", [this] {
            if (fails) {
                throw Exception("It fails.");
            }
            ++updates;
            tellProgress(0.5f);
            return String("Counted.");
        });
    }
    Optional<BitmapImpl<Rgb>> computeRgbRegion(const Request&) override {
        BitmapImpl<Rgb> pixel(1, 1);
        pixel.at(0, 0) = Rgb{float(updates), 0, 0, 0};
        return pixel;
    }
    Optional<BitmapImpl<float>> computeMonoRegion(const Request&) override {
        BitmapImpl<float> pixel(1, 1);
        pixel.at(0, 0) = float(updates);
        return pixel;
    }
};

/// Forwards everything.
class ForwardingOperator final : public DependentMixin<1, IOperator> {
    Optional<BitmapImpl<Rgb>> computeRgbRegion(const Request& request) override {
        return requestRgb(request);
    }
};

class OperatorFramework : public testing::Test {
protected:
    OperatorFramework() {
        source_.onStart = [this](const String& title) { log_.push_back(title.toUtf8()); };
        source_.onProgress = [this](float part) { log_.push_back(std::to_string(part)); };
        source_.onFinish = [this](const String& message) { end(message); };
        source_.onError = [this](const String& text) { end(text); };
        forward_.setInput(source_);
    }
    void end(const String& text) {
        log_.push_back(text.toUtf8());
        ended_.release();
    }

    std::vector<std::string> log_;
    std::counting_semaphore<> ended_{0};
    CountingOperator source_;
    ForwardingOperator forward_;
};

TEST_F(OperatorFramework, AComputationTellsItsCourse) {
    source_.mayUpdate.release();
    source_.recompute();
    ended_.acquire();
    EXPECT_THAT(log_,
                ElementsAre("Counting progress", "0.000000", "0.500000", "1.000000", "Counted."));
    log_.clear();
    source_.fails = true;
    source_.mayUpdate.release();
    source_.recompute();
    ended_.acquire();
    EXPECT_THAT(log_, ElementsAre("Counting progress", "0.000000", "It fails."));
    log_.clear();
    source_.computeSilently();
    EXPECT_THAT(log_, ElementsAre());
}

TEST_F(OperatorFramework, RequestsThatWaitGetWhatIsPending) {
    EXPECT_EQ(forward_.provideMonoRegion("", windowOf(1, 1), 1.0f)->at(0, 0), 0);
    source_.recomputeAndWaitForStart();
    source_.recompute();
    EXPECT_EQ(forward_.provideMonoRegion("", windowOf(1, 1), 1.0f)->at(0, 0), 0)
        << "without the flag nobody waits";
    std::thread release([this] { source_.mayUpdate.release(2); });
    EXPECT_EQ(forward_.provideMonoRegion("", windowOf(1, 1), 1.0f, Control::Wait)->at(0, 0), 2);
    EXPECT_EQ(forward_.provideRgbRegion("", windowOf(1, 1), 1.0f, Control::Wait)->at(0, 0).r, 2);
    release.join();
}

TEST_F(OperatorFramework, RequestsToACancelledInputAreNotAnswered) {
    source_.recomputeAndWaitForStart();
    source_.cancel();
    source_.recompute();
    EXPECT_FALSE(forward_.provideMonoRegion("", windowOf(1, 1), 1.0f, Control::Wait));
    EXPECT_FALSE(forward_.provideRgbRegion("", windowOf(1, 1), 1.0f, Control::Wait));
}

TEST_F(OperatorFramework, ForwardsWhatIsKnownOfTheImage) {
    EXPECT_EQ(forward_.getRevision(), 7);
    EXPECT_EQ(forward_.getDisplayWindow(), windowOf(1, 1));
    EXPECT_EQ(forward_.getDataWindow(), windowOf(2, 3));
}

TEST_F(OperatorFramework, RequestsWithoutAMeaningAreNotAnswered) {
    for (const auto& [region, scale] :
         std::vector<std::pair<Bucket, float>>{{{0, 0, 0, 1}, 1.0f},
                                               {{0, 2, 1, 1}, 1.0f},
                                               {windowOf(1, 1), 0.0f},
                                               {windowOf(3, 1), 1.0f},
                                               {windowOf(1, 1), 1e-30f},
                                               {windowOf(1, 1), 1e30f},
                                               {windowOf(1, 1), -1.0f},
                                               {windowOf(1, 1), NAN},
                                               {windowOf(1, 1), INFINITY}}) {
        EXPECT_FALSE(forward_.provideRgbRegion("", region, scale));
        EXPECT_FALSE(forward_.provideMonoRegion("", region, scale));
    }
}

TEST(ElementSelector, ChoosesByDisplayName) {
    const auto selects = [](const char* selector, const char* element) {
        return IOperator::ElementSelector(selector).toFilter()({element, {}, 0});
    };
    EXPECT_TRUE(selects("*", "") && selects("*", "A") && selects("*", "Any"));
    EXPECT_TRUE(selects("BEAUTY", "") && !selects("BEAUTY", "BEAUTY"));
    EXPECT_TRUE(selects("Alpha", "A") && !selects("Alpha", "Alpha"));
    EXPECT_TRUE(selects("Beauty", "Beauty") && !selects("Beauty", ""));
}

}  // namespace
}  // namespace tavrin::pipeline
