#include "base/image/Exr.h"
#include "tests/support/TemporaryFolder.h"

#include <OpenImageIO/imageio.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

namespace tavrin::tests {
namespace {

using image::ChannelImage;
using image::ElementKind;

/// A picture file in floats, colours as they stand beside alpha.
struct Picture {
    int width = 0;
    int height = 0;
    int channels = 0;
    std::vector<float> values;

    float at(std::size_t pixel, int channel) const {
        return values[pixel * std::size_t(channels) + std::size_t(channel)];
    }
};

Picture readPicture(const Path& path) {
    OIIO::ImageSpec asStored;
    asStored.attribute("oiio:UnassociatedAlpha", 1);
    const auto input = OIIO::ImageInput::open(path.std().string(), &asStored);
    EXPECT_TRUE(input) << OIIO::geterror();
    if (!input) {
        return {};
    }
    Picture picture{input->spec().width, input->spec().height, input->spec().nchannels, {}};
    picture.values.resize(std::size_t(picture.width) * std::size_t(picture.height) *
                          std::size_t(picture.channels));
    EXPECT_TRUE(
        input->read_image(0, 0, 0, picture.channels, OIIO::TypeFloat, picture.values.data()));
    return picture;
}

/// IEC 61966-2-1.
double encodeSrgb(double linear) {
    return linear <= 0.0031308 ? 12.92 * linear : 1.055 * std::pow(linear, 1.0 / 2.4) - 0.055;
}

/// Runs the real program on an image of random colours that has a data window of its own.
class SavedPicture : public testing::Test {
protected:
    SavedPicture() {
        const Bucket display = {0, 0, 41, 23};
        const Bucket data = {-3, -2, 44, 25};
        image_ = ChannelImage(display, data, 1.0f);
        image_.addElement({"", ElementKind::Rgba, 0});
        image_.addElement({"Reflect", ElementKind::Rgb, 0});
        image_.addElement({"ZDepth", ElementKind::Mono, 0});
        image_.fitChannelsToDataWindow();
        std::mt19937 generator(7);
        std::uniform_real_distribution<float> value(0.0f, 1.0f);
        for (const auto& [name, channel] : image_.getChannels()) {
            for (float& number : image_.getChannel<float>(name).getValues()) {
                number = value(generator);
            }
        }
        EXPECT_TRUE(image::ExrSaver().save(image_, folder_ / "in.exr"));
    }

    void run(const std::string& arguments) {
        const std::string command =
            std::string(TAVRIN_CLI) + " '" + (folder_ / "in.exr").std().string() + "' " + arguments;
        ASSERT_EQ(0, std::system(command.c_str())) << command;
    }

    std::string getFile(const char* name) { return "'" + (folder_ / name).std().string() + "'"; }

    std::span<const float> getValues(const char* channel) const {
        return image_.getChannel<float>(channel).getValues();
    }

    TemporaryFolder folder_;
    ChannelImage image_;
};

TEST_F(SavedPicture, WithoutToneMappingHoldsTheEncodedBeautyWithItsAlpha) {
    run("--no-tone-mapping --format-option bitdepth=16 -o " + getFile("out.png"));
    const Picture picture = readPicture(folder_ / "out.png");
    ASSERT_EQ(47, picture.width);
    ASSERT_EQ(27, picture.height);
    ASSERT_EQ(4, picture.channels);
    constexpr double kHalfLevel = 0.51 / 65535.0;
    for (std::size_t i = 0; i < getValues("R").size(); ++i) {
        EXPECT_NEAR(encodeSrgb(getValues("R")[i]), picture.at(i, 0), kHalfLevel);
        EXPECT_NEAR(encodeSrgb(getValues("G")[i]), picture.at(i, 1), kHalfLevel);
        EXPECT_NEAR(encodeSrgb(getValues("B")[i]), picture.at(i, 2), kHalfLevel);
        EXPECT_NEAR(getValues("A")[i], picture.at(i, 3), kHalfLevel);
    }
}

TEST_F(SavedPicture, InALinearFormatHoldsLinearValues) {
    run("--no-tone-mapping --format-option bitdepth=32f --element Reflect -o " +
        getFile("out.exr"));
    const Picture picture = readPicture(folder_ / "out.exr");
    for (std::size_t i = 0; i < getValues("Reflect.R").size(); ++i) {
        EXPECT_NEAR(getValues("Reflect.R")[i], picture.at(i, 0), 1e-5);
        EXPECT_NEAR(getValues("Reflect.B")[i], picture.at(i, 2), 1e-5);
    }
}

TEST_F(SavedPicture, OfADataPassHoldsItsValuesAsStored) {
    run("--format-option bitdepth=32f --element ZDepth -o " + getFile("out.tif"));
    const Picture picture = readPicture(folder_ / "out.tif");
    ASSERT_EQ(3, picture.channels);
    for (std::size_t i = 0; i < getValues("ZDepth").size(); ++i) {
        for (int channel = 0; channel < 3; ++channel) {
            EXPECT_EQ(getValues("ZDepth")[i], picture.at(i, channel));
        }
    }
}

TEST_F(SavedPicture, IsToneMappedByDefault) {
    run("-o " + getFile("mapped.png"));
    run("--no-tone-mapping -o " + getFile("plain.png"));
    const Picture mapped = readPicture(folder_ / "mapped.png");
    const Picture plain = readPicture(folder_ / "plain.png");
    EXPECT_NE(plain.values, mapped.values);
}

TEST_F(SavedPicture, DoesNotDependOnTheNumberOfThreads) {
    run("--threads 1 -o " + getFile("one.tif"));
    run("--threads 5 -o " + getFile("five.tif"));
    EXPECT_EQ(readPicture(folder_ / "one.tif").values, readPicture(folder_ / "five.tif").values);
}

TEST_F(SavedPicture, OfTheWholeImageIsTheSameImage) {
    run("-o " + getFile("out.txr"));
    const Result<ChannelImage> saved = image::ExrLoader().load(folder_ / "out.txr");
    ASSERT_TRUE(saved) << saved.error().toUtf8();
    ASSERT_EQ(image_.getChannels().size(), saved->getChannels().size());
    for (const auto& [name, channel] : image_.getChannels()) {
        ASSERT_TRUE(saved->hasChannel<float>(name));
        const auto expected = image_.getChannel<float>(name).getValues();
        const auto actual = saved->getChannel<float>(name).getValues();
        EXPECT_TRUE(std::ranges::equal(expected, actual)) << name.toUtf8();
    }
    EXPECT_EQ(image_.getDataWindow(), saved->getDataWindow());
    EXPECT_EQ(image_.getDisplayWindow(), saved->getDisplayWindow());
}

}  // namespace
}  // namespace tavrin::tests
