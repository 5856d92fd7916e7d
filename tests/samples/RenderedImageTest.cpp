#include "base/image/Exr.h"
#include "foundation/Scheduler.h"
#include "samples/DeskScene.h"
#include "samples/Program.h"
#include "samples/Renderer.h"
#include "tests/support/Message.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>

namespace tavrin::samples {
namespace {

CommandLine smallRender(int samples) {
    CommandLine line;
    line.size = {32, 18};
    line.samples = samples;
    line.quiet = true;
    return line;
}

std::span<const float> plane(const image::ChannelImage& image, const String& channel) {
    return image.getChannel<float>(channel).getValues();
}

std::string bytesOf(const Path& path) {
    std::ifstream stream(path.std(), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

TEST(RenderedImage, LightsAddUpToTheBeauty) {
    const image::ChannelImage image = renderDesk(smallRender(4));
    for (const char* component : {"R", "G", "B"}) {
        std::vector<float> sum(32 * 18);
        for (const char* light : kLightNames) {
            const auto values = plane(image, image::joinChannelName(light, component));
            EXPECT_GT(*std::max_element(values.begin(), values.end()), 0) << light;
            std::transform(sum.begin(), sum.end(), values.begin(), sum.begin(), std::plus<>());
        }
        const auto beauty = plane(image, component);
        EXPECT_TRUE(std::equal(sum.begin(), sum.end(), beauty.begin()));
    }
}

TEST(RenderedImage, DescribesItsElements) {
    CommandLine line = smallRender(2);
    line.timing = true;
    const image::ChannelImage image = renderDesk(line);
    EXPECT_TRUE(image.isValid());
    EXPECT_TRUE(image.isTxrImage());
    EXPECT_EQ(image.getAttribute<int>("tavrin.stats.passes"), 2);
    EXPECT_GE(image.getAttribute<int>("tavrin.stats.time"), 1);
    EXPECT_GT(image.getAttribute<int>("tavrin.stats.rayspersecond"), 0);
    EXPECT_GT(image.getAttribute<float>("tavrin.stats.rayspersample"), 1);
    const auto elements = image.getElements();
    const auto find = [&](const String& name) {
        return *std::find_if(elements.begin(), elements.end(),
                             [&](const auto& element) { return element.name == name; });
    };
    for (std::size_t i = 0; i < kLightNames.size(); ++i) {
        EXPECT_EQ(elements[i].name, kLightNames[i]);
        EXPECT_EQ(elements[i].flags, image::kLightSelectElement | image::kDenoisableElement |
                                         image::kSelectedForDenoising);
    }
    EXPECT_EQ(find("").kind, image::ElementKind::Rgba);
    EXPECT_TRUE(isDenoiseCapable(find("")));
    EXPECT_TRUE(find("VisibleNormals").has(image::kAuxiliaryElement));
    EXPECT_TRUE(find(image::kWeightsElement).has(image::kAuxiliaryElement));
    EXPECT_TRUE(find("MaskObjects").has(image::kNoColorMapping));
    EXPECT_TRUE(find("MaskObjects").has(image::kNoGlare));
}

TEST(RenderedImage, ThreadsMakeNoDifference) {
    const tests::TemporaryFolder folder;
    std::vector<std::string> files;
    for (const int threads : {1, 2, 5}) {
        CommandLine line = smallRender(3);
        line.threads = threads;
        line.output = folder / "image.txr";
        run(line);
        files.push_back(bytesOf(line.output));
    }
    Scheduler::setThreadCount(0);
    EXPECT_EQ(files[0], files[1]);
    EXPECT_EQ(files[0], files[2]);

    const auto image = image::ExrLoader().load(folder / "image.txr");
    ASSERT_TRUE(image) << image.error().toUtf8();
    EXPECT_TRUE(image->isTxrImage());

    CommandLine line = smallRender(3);
    line.seed = 2;
    line.output = folder / "other.txr";
    run(line);
    EXPECT_NE(files[0], bytesOf(line.output));
}

TEST(RenderedImage, MergedPartsAreTheWhole) {
    CommandLine line = smallRender(11);
    const image::ChannelImage whole = renderDesk(line);
    std::vector<image::ChannelImage> parts;
    int passes = 0;
    line.parts = 3;
    for (line.part = 1; line.part <= line.parts; ++line.part) {
        parts.push_back(renderDesk(line));
        passes += parts.back().getAttribute<int>("tavrin.stats.passes");
    }
    EXPECT_EQ(passes, 11);
    for (const char* channel : {"R", "G", "B", "A", "Key.R", "Window.B", "Neon.R", "Filament.G",
                                "VisibleNormals.B", "VisibleDiffuse.G", "MaskObjects.R"}) {
        const auto expected = plane(whole, channel);
        for (std::size_t i = 0; i < expected.size(); ++i) {
            double sum = 0;
            double weights = 0;
            for (const image::ChannelImage& part : parts) {
                const double weight = plane(part, image::kWeightsElement)[i];
                sum += weight * plane(part, channel)[i];
                weights += weight;
            }
            EXPECT_EQ(weights, plane(whole, image::kWeightsElement)[i]);
            ASSERT_NEAR(sum / weights, expected[i], 1e-6 * std::abs(expected[i]) + 1e-7) << channel;
        }
    }
}

// Over many seeds, the variance that the images tell is that of their pixels.
TEST(RenderedImage, VarianceIsHonest) {
    constexpr int kSeeds = 40;
    constexpr Pixel kSize{24, 14};
    constexpr std::size_t kPixels = 24 * 14;
    const Scene scene = makeDeskScene();
    std::array<Moments<2>, kPixels> found;
    std::array<std::array<double, 2>, kPixels> told{};
    for (int seed = 0; seed < kSeeds; ++seed) {
        render(scene, getDeskView(), {kSize, std::uint64_t(seed), 0, 8},
               [&](Pixel pixel, const PixelStatistics& statistics) {
                   const auto i = std::size_t(pixel.y) * 24 + std::size_t(pixel.x);
                   found[i].add(
                       {statistics.getBeauty().getMean(1), statistics.getNormal().getMean(1)});
                   told[i][0] += statistics.getBeauty().getVarianceOfMean(1) / kSeeds;
                   told[i][1] += statistics.getNormal().getVarianceOfMean(1) / kSeeds;
               });
    }
    for (std::size_t value = 0; value < 2; ++value) {
        std::vector<double> ratios;
        for (std::size_t i = 0; i < kPixels; ++i) {
            if (told[i][value] > 0) {
                // The unbiased variance among the seeds' means.
                ratios.push_back(found[i].getVarianceOfMean(value) * kSeeds / told[i][value]);
            }
        }
        ASSERT_GT(ratios.size(), kPixels / 2);
        std::sort(ratios.begin(), ratios.end());
        EXPECT_NEAR(ratios[ratios.size() / 2], 1, 0.1) << value;
    }
}

TEST(RenderedImage, RefusesToRenderForAMissingFolder) {
    CommandLine line = smallRender(2);
    line.output = Path(String("/no-such-folder/image.txr"));
    EXPECT_EQ(tests::messageOf([&] { run(line); }),
              "There is no folder \"/no-such-folder\" to save to.");
}

}  // namespace
}  // namespace tavrin::samples
