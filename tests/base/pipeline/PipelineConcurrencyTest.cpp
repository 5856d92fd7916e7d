#include "services/postcore/PropertyIds.h"
#include "tests/base/pipeline/TestChain.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <semaphore>
#include <thread>

namespace tavrin::pipeline {
namespace {

using image::kLightMixInteractive;

TEST(PipelineConcurrency, RegionsAreOfOneImageWhileLoadsReplaceIt) {
    TestChain test;
    test.setFile("small", [] { return makeConstant(windowOf(40, 30), "", 0.25f); });
    test.setFile("large", [] { return makeConstant(windowOf(80, 60), "", 0.5f); });
    ASSERT_EQ(test.load({"small"}), "");
    test.settings().set(postcore::kSharpenBlurEnabledId, true);
    std::atomic<bool> isDone = false;
    std::atomic<int> answers = 0;
    std::vector<std::thread> readers;
    for (int i = 0; i < 3; ++i) {
        readers.emplace_back([&, i] {
            while (!isDone) {
                const Bucket window = test.chain.zoom.getDataWindow();
                const auto colors = test.chain.zoom.provideRgbRegion(
                    {}, windowOf(window.x1, window.y1), i == 2 ? 0.5f : float(i + 1));
                if (!colors) {
                    continue;  // it was the window of another image
                }
                ++answers;
                // Every pixel but those that sharpening mixes with neighbours is the same.
                const auto pixels = colors->pixels();
                EXPECT_TRUE(std::ranges::all_of(
                    pixels, [&](const Rgb& c) { return std::abs(c.r - pixels[0].r) < 1e-4f; }));
            }
        });
    }
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(test.load({i % 2 == 0 ? "large" : "small"}), "");
        test.chain.load.setElementsFlag(image::kSelectedForDenoising, {});
    }
    isDone = true;
    std::ranges::for_each(readers, &std::thread::join);
    EXPECT_GT(answers, 0);
}

TEST(PipelineConcurrency, AMixIsOfTheLightsAndAlphaOfOneImage) {
    const auto makeLit = [](float value) {
        return [value] {
            auto image = makeRender(windowOf(16, 12), 1);
            for (const auto& [name, item] : image.getChannels()) {
                std::ranges::fill(image.getChannel<float>(name).getValues(), value);
            }
            return image;
        };
    };
    TestChain test;
    test.setFile("dark", makeLit(0.25f));
    test.setFile("bright", makeLit(2.0f));
    ASSERT_EQ(test.load({"dark"}), "");
    std::atomic<bool> isDone = false;
    std::atomic<int> answers = 0;
    std::atomic<int> mixed = 0;
    std::thread reader([&] {
        while (!isDone) {
            const auto mix =
                test.chain.includeAlpha.provideRgbRegion(kLightMixInteractive, windowOf(16, 12), 1);
            ASSERT_TRUE(mix);
            const Rgb pixel = mix->at(3, 3);
            ++answers;
            // Four lights of the value that alpha has, too.
            mixed += pixel.r != 4.0f * pixel.a;
        }
    });
    for (int i = 0; i < 300; ++i) {
        EXPECT_EQ(test.load({i % 2 == 0 ? "bright" : "dark"}), "");
    }
    isDone = true;
    reader.join();
    EXPECT_GT(answers, 0);
    EXPECT_EQ(mixed, 0);
}

TEST(PipelineConcurrency, SettingsAreWrittenDuringLightMixRequests) {
    TestChain test;
    test.setFile("render", [] { return makeRender(windowOf(64, 48), 1); });
    ASSERT_EQ(test.load({"render"}), "");
    test.settings().set(postcore::kLightMixIntensityId, std::vector<float>(4, 1.0f));
    const auto single =
        test.chain.lightMix.provideRgbRegion(kLightMixInteractive, windowOf(64, 48), 1.0f);
    std::atomic<bool> isDone = false;
    std::vector<std::thread> writers;
    for (const float factor : {0.5f, 2.0f}) {
        writers.emplace_back([&test, &isDone, factor] {
            while (!isDone) {
                test.settings().set(postcore::kLightMixIntensityId, std::vector<float>(4, factor));
            }
        });
    }
    for (int i = 0; i < 50; ++i) {
        const auto mix =
            test.chain.lightMix.provideRgbRegion(kLightMixInteractive, windowOf(64, 48), 1.0f);
        // The whole mix has one of the factors; each is a power of two, so that this is exact.
        const float factor = mix->at(0, 0).r / single->at(0, 0).r;
        EXPECT_TRUE(factor == 0.5f || factor == 1.0f || factor == 2.0f) << factor;
        for (std::size_t p = 0; p < mix->pixels().size(); ++p) {
            ASSERT_EQ(mix->pixels()[p].g, single->pixels()[p].g * factor);
        }
    }
    isDone = true;
    std::ranges::for_each(writers, &std::thread::join);
}

TEST(PipelineConcurrency, AnOperatorEndsAfterTheLoadThatGoesOn) {
    std::binary_semaphore started(0);
    std::atomic<bool> hasEnded = false;
    settings::Settings settings;
    colorkit::ColorMapping colorMapping;
    {
        Performer chain(settings, colorMapping);
        chain.load.setLoader([&](const Path& path) {
            EXPECT_EQ(path.native(), "a") << "the pending load is dropped";
            started.release();
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            hasEnded = true;
            return makeRender(windowOf(8, 8), 1);
        });
        chain.load.load({}, {Path(String("a"))});
        started.acquire();
        chain.load.load({}, {Path(String("b"))});
    }
    EXPECT_TRUE(hasEnded);
    EXPECT_FALSE(colorMapping.getContext().errorCallback) << "the operator is gone";
}

TEST(PipelineConcurrency, LoadsThatAreAskedForDuringALoadBecomeOne) {
    std::atomic<int> loads = 0;
    std::counting_semaphore<> started(0);
    std::counting_semaphore<> mayEnd(0);
    std::counting_semaphore<> ended(0);
    settings::Settings settings;
    colorkit::ColorMapping colorMapping;
    Performer chain(settings, colorMapping);
    chain.load.setLoader([&](const Path&) {
        ++loads;
        started.release();
        mayEnd.acquire();
        return makeRender(windowOf(8, 8), 1);
    });
    chain.load.onFinish = [&](const String&) { ended.release(); };
    chain.load.load({}, {Path(String("first"))});
    started.acquire();
    for (int i = 0; i < 10; ++i) {
        chain.load.load({}, {Path(String("file" + String::fromUtf8(std::to_string(i))))});
    }
    mayEnd.release(11);
    ended.acquire();
    ended.acquire();
    EXPECT_EQ(loads, 2);
    EXPECT_EQ(chain.load.getLoadedPaths().front().native(), "file9");
}

}  // namespace
}  // namespace tavrin::pipeline
