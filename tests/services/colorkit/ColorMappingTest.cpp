#include "services/colorkit/ColorMapping.h"
#include "services/colorkit/Pipeline.h"
#include "services/colorkit/operators/LutOperator.h"
#include "tests/services/colorkit/MappingFixtures.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace tavrin::colorkit::test {
namespace {

constexpr Pixel kDisplaySize{640, 480};

TEST(ColorMapping, MappingOperatorsAreSnapshots) {
    ColorMapping colorMapping;
    CommonColorMappingContext context;
    context.displayGamma = 1.0f;
    colorMapping.setPipeline(makePipeline({exposure(1.0f)}));
    const auto mapping = colorMapping.createMappingOperator(context, kDisplaySize);
    colorMapping.setEnabled(false);
    colorMapping.setPipeline({});
    std::vector<Rgb> row = {{1.0f, 1.0f, 1.0f, 1.0f}};
    mapping->mapRow(row, {});
    EXPECT_EQ(row[0].r, 2.0f);
}

TEST(ColorMapping, MayChangeWhileOthersMap) {
    ColorMapping colorMapping;
    colorMapping.setPipeline(makePipeline({exposure(1.0f)}));
    std::atomic<bool> isDone = false;
    std::thread editor([&] {
        for (int i = 0; i < 500; ++i) {
            CommonColorMappingContext context;
            context.errorCallback = [i](int, const String&) { return i; };
            colorMapping.setPipeline(makePipeline({exposure(i % 2 == 0 ? 1.0f : 2.0f)}));
            colorMapping.setContext(context);
            colorMapping.setEnabled(i % 3 != 0);
        }
        isDone = true;
    });
    std::vector<std::thread> mappers;
    for (int i = 0; i < 2; ++i) {
        mappers.emplace_back([&] {
            do {
                CommonColorMappingContext context = colorMapping.getContext();
                context.displayGamma = 1.0f;
                BitmapImpl<Rgb> bitmap(33, 3);
                for (Rgb& pixel : bitmap.pixels()) {
                    pixel = {1.0f, 1.0f, 1.0f, 1.0f};
                }
                const auto mapping = colorMapping.createMappingOperator(context, kDisplaySize);
                mapping->mapBitmap(bitmap, {}, 1.0f);
                const float first = bitmap.at(0, 0).r;
                EXPECT_TRUE(first == 1.0f || first == 2.0f || first == 4.0f) << first;
                for (const Rgb& pixel : bitmap.pixels()) {
                    EXPECT_EQ(pixel.r, first);
                }
            } while (!isDone);
        });
    }
    editor.join();
    for (std::thread& mapper : mappers) {
        mapper.join();
    }
}

TEST(ColorMapping, ObserversAreToldAboutChanges) {
    ColorMapping colorMapping;
    std::string calls;
    auto enabled = colorMapping.addEnabledObserver(
        [&] { calls += colorMapping.isEnabled() ? "on " : "off "; });
    auto pipeline = colorMapping.addPipelineObserver(
        [&] { calls += colorMapping.getPipeline().isEmpty() ? "empty " : "full "; });
    colorMapping.setEnabled(true);
    colorMapping.setPipeline({});
    EXPECT_EQ(calls, "");
    const auto operators = makePipeline({exposure(1.0f)});
    colorMapping.setPipeline(operators);
    colorMapping.setPipeline(operators);
    colorMapping.setEnabled(false);
    EXPECT_EQ(calls, "full off ");
    // Its operator has another id.
    colorMapping.setPipeline(makePipeline({exposure(1.0f)}));
    EXPECT_EQ(calls, "full off full ");
    enabled = {};
    pipeline = {};
    colorMapping.setEnabled(true);
    colorMapping.setPipeline({});
    EXPECT_EQ(calls, "full off full ");
}

TEST(ColorMapping, TellsWhatAnOperatorCannotDoOncePerPipeline) {
    const auto missingLut = makePipeline({OperatorValues(LutOperator::kDescriptor)
                                              .setEnabled(true)
                                              .set(LutOperator::kPath, Path(String("none.cube")))});
    int calls = 0;
    CommonColorMappingContext context;
    context.errorCallback = [&](int, const String& text) {
        EXPECT_TRUE(text.contains("none.cube")) << text.toUtf8();
        ++calls;
    };
    ColorMapping colorMapping;
    colorMapping.setPipeline(missingLut);
    colorMapping.createMappingOperator(context, kDisplaySize);
    colorMapping.createMappingOperator(context, kDisplaySize);
    EXPECT_EQ(calls, 1);
    colorMapping.setPipeline({});
    colorMapping.setPipeline(missingLut);
    colorMapping.createMappingOperator(context, kDisplaySize);
    EXPECT_EQ(calls, 2);
    colorMapping.setContext(context);
    colorMapping.createMappingOperator({}, kDisplaySize);
    EXPECT_EQ(calls, 3) << "the context that was set hears of it when the other one is silent";
}

TEST(ColorMapping, ObserversMayComeAndGoWhileOthersChangeIt) {
    ColorMapping colorMapping;
    std::atomic<int> running = 2;
    std::vector<std::thread> editors;
    for (int i = 0; i < 2; ++i) {
        editors.emplace_back([&, i] {
            for (int k = 0; k < 500; ++k) {
                colorMapping.setPipeline(makePipeline({exposure(1.0f)}));
                colorMapping.setEnabled((k + i) % 2 == 0);
            }
            --running;
        });
    }
    int calls = 0;
    do {
        // Plain on purpose: the notifications must come one after the other.
        const auto lifetime = colorMapping.addPipelineObserver([&] {
            ++calls;
            EXPECT_FALSE(colorMapping.getPipeline().isEmpty());
        });
        std::this_thread::yield();
    } while (running > 0);
    for (std::thread& editor : editors) {
        editor.join();
    }
    const auto lifetime = colorMapping.addPipelineObserver([&] { calls = -1; });
    colorMapping.setPipeline({});
    EXPECT_EQ(calls, -1);
}

}  // namespace
}  // namespace tavrin::colorkit::test
