#include "services/imageio/SaveImage.h"
#include "tests/services/imageio/ReadPicture.h"
#include "tests/services/imageio/TestPicture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <future>
#include <iterator>
#include <limits>
#include <set>
#include <string>

namespace tavrin::imageio {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

Path pathOf(const TestFolder& folder, const ImageFormatInfo& info) {
    return folder / ("picture." + info.extensions.front().toUtf8()).c_str();
}

/// Saves and reads back.
ReadPicture roundTrip(const TestPicture& picture, bool isData, ImageFormat format,
                      const ImageSaveSettings& settings = {}) {
    const TestFolder folder;
    const Path path = pathOf(folder, getImageFormatInfo(format));
    const Result<void> answer = saveImage(path, picture, isData, {}, settings, TaskProgress());
    if (!answer) {
        ADD_FAILURE() << answer.error().toUtf8();
        return {};
    }
    EXPECT_EQ(folder.countFiles(), 1u);
    return readPicture(path);
}

ImageSaveSettings withDepth(BitDepth depth) {
    return {.bitDepth = depth, .quality = {}, .compression = {}};
}

std::string readBytes(const Path& path) {
    std::ifstream stream(path.std(), std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// What an integer sample of so many bits should say.
double quantized(float value, int bits) {
    const double highest = std::pow(2.0, bits) - 1.0;
    return std::isnan(value)
               ? 0.0
               : std::floor(std::clamp<double>(value, 0.0, 1.0) * highest + 0.5) / highest;
}

double linearLight(double encoded) {
    return encoded <= 0.04045 ? encoded / 12.92 : std::pow((encoded + 0.055) / 1.055, 2.4);
}

struct Case {
    ImageFormat format;
    BitDepth depth;
};

std::vector<Case> allCases() {
    std::vector<Case> cases;
    for (const ImageFormatInfo& info : getImageFormats()) {
        for (const BitDepth depth : info.bitDepths) {
            cases.push_back({info.format, depth});
        }
    }
    return cases;
}

/// How far a sample of a file may be from what was given, for values up to 1.2.
double toleranceOf(const Case& sample) {
    switch (sample.format) {
        case ImageFormat::Jpeg:
        case ImageFormat::WebP:
            return 0.03;
        case ImageFormat::RadianceHdr:
            return 1.0 / 256.0;
        case ImageFormat::OpenExr:
            return sample.depth == BitDepth::Half ? 1.0 / 2048.0 : 0.0;
        case ImageFormat::Dpx:
            // The reader spreads the levels over 16 bits.
            return 1.0 / 65535.0;
        default:
            return 1e-7;
    }
}

/// OpenImageIO 2.4 reads 0 for the alpha at the end of a row of 10-bit samples, three in a word,
/// when that sample has a word of its own. The file has it.
bool isLostByReader(const Case& sample, const OIIO::ImageSpec& spec, std::size_t pixel,
                    int channel) {
    const auto width = static_cast<std::size_t>(spec.width);
    return sample.depth == BitDepth::Int10 && channel == 3 && (width * 4) % 3 == 1 &&
           pixel % width == width - 1;
}

class SaveImageTest : public testing::TestWithParam<Case> {};

TEST_P(SaveImageTest, WritesEverySizeWithAndWithoutAlpha) {
    const auto& [format, depth] = GetParam();
    const ImageFormatInfo& info = getImageFormatInfo(format);
    const bool isLossy = format == ImageFormat::Jpeg || format == ImageFormat::WebP;
    for (const Pixel size : {Pixel{1, 1}, Pixel{7, 3}, Pixel{1, 40}, Pixel{33, 300}}) {
        if (std::min(size.x, size.y) < info.minimumSide) {
            continue;
        }
        for (const bool hasAlpha : {false, true}) {
            // Lossy formats are only close to one colour that covers everything.
            const TestPicture picture =
                isLossy ? TestPicture::uniform(size, hasAlpha, {0.2f, 0.7f, 0.4f, 1.0f})
                        : TestPicture::random(size, hasAlpha, -0.1f, 1.2f);
            const ReadPicture answer = roundTrip(picture, true, format, withDepth(depth));
            ASSERT_EQ(answer.spec.width, size.x);
            ASSERT_EQ(answer.spec.height, size.y);
            // The lossy pictures are opaque, and WebP keeps no alpha that is 1 everywhere.
            const bool keepsAlpha = hasAlpha && info.carriesAlpha && !isLossy;
            ASSERT_EQ(answer.spec.nchannels, keepsAlpha ? 4 : 3);
            EXPECT_EQ(answer.spec.alpha_channel, keepsAlpha ? 3 : -1);
            EXPECT_EQ(answer.getBits(), getBitCount(depth));
            for (std::size_t i = 0; i < picture.pixels().size(); ++i) {
                const Rgba& pixel = picture.pixels()[i];
                const float given[] = {pixel.r, pixel.g, pixel.b, pixel.a};
                for (int channel = 0; channel < answer.spec.nchannels; ++channel) {
                    if (isLostByReader(GetParam(), answer.spec, i, channel)) {
                        continue;
                    }
                    double wanted = given[channel];
                    if (format == ImageFormat::RadianceHdr) {
                        wanted = std::max(wanted, 0.0);
                    } else if (!isFloatingPoint(depth)) {
                        wanted = quantized(given[channel], getBitCount(depth));
                    }
                    ASSERT_NEAR(answer.at(i, channel), wanted, toleranceOf(GetParam()))
                        << "pixel " << i << " channel " << channel;
                }
            }
        }
    }
}

TEST_P(SaveImageTest, GivesNonFiniteValuesADefiniteMeaning) {
    const auto& [format, depth] = GetParam();
    const ReadPicture answer =
        roundTrip(TestPicture::uniform({32, 32}, false, {kNan, kInfinity, -kInfinity, 1.0f}), true,
                  format, withDepth(depth));
    const float nan = answer.at(0, 0);
    const float high = answer.at(0, 1);
    const float low = answer.at(0, 2);
    if (format == ImageFormat::RadianceHdr) {
        EXPECT_EQ(nan, 0.0f);
        EXPECT_GT(high, 1e38f);
        EXPECT_TRUE(std::isfinite(high));
        EXPECT_EQ(low, 0.0f);
    } else if (isFloatingPoint(depth)) {
        EXPECT_TRUE(std::isnan(nan));
        EXPECT_EQ(high, kInfinity);
        EXPECT_EQ(low, -kInfinity);
    } else {
        EXPECT_NEAR(nan, 0.0f, 0.05f);
        EXPECT_NEAR(high, 1.0f, 0.05f);
        EXPECT_NEAR(low, 0.0f, 0.05f);
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, SaveImageTest, testing::ValuesIn(allCases()),
                         [](const testing::TestParamInfo<Case>& info) {
                             return (getImageFormatInfo(info.param.format).name + "_" +
                                     toString(info.param.depth))
                                 .toUtf8();
                         });

TEST(SaveImageValuesTest, LinearFormatsGetLinearLightOfMappedPictures) {
    const TestPicture picture(
        {3, 1},
        {{0.0f, 0.02f, 0.04045f, 0.5f}, {0.5f, 0.9f, 1.0f, 0.25f}, {1.5f, 4.0f, 0.001f, 1.0f}});
    const ReadPicture exr =
        roundTrip(picture, false, ImageFormat::OpenExr, withDepth(BitDepth::Float));
    const ReadPicture hdr = roundTrip(picture, false, ImageFormat::RadianceHdr);
    for (std::size_t i = 0; i < picture.pixels().size(); ++i) {
        const Rgba& pixel = picture.pixels()[i];
        const double wanted[] = {linearLight(pixel.r), linearLight(pixel.g), linearLight(pixel.b)};
        const double highest = *std::ranges::max_element(wanted);
        for (int channel = 0; channel < 3; ++channel) {
            EXPECT_NEAR(exr.at(i, channel), wanted[channel], 1e-6 * highest);
            // Half a step of the shared exponent, which is at least 1/256 of the highest value.
            EXPECT_NEAR(hdr.at(i, channel), wanted[channel], highest / 256.0);
        }
        EXPECT_EQ(exr.at(i, 3), pixel.a);
    }
}

TEST(SaveImageValuesTest, FloatingPointTiffKeepsMappedValues) {
    const TestPicture picture({2, 1}, {{-0.5f, 0.25f, 0.5f, 0.5f}, {1.5f, 20.0f, 1.0f, 0.0f}});
    const ReadPicture answer =
        roundTrip(picture, false, ImageFormat::Tiff, withDepth(BitDepth::Float));
    EXPECT_EQ(answer.samples,
              (std::vector<float>{-0.5f, 0.25f, 0.5f, 0.5f, 1.5f, 20.0f, 1.0f, 0.0f}));
}

TEST(SaveImageValuesTest, HalvesStayFinite) {
    const TestPicture picture({1, 1}, {{1e6f, -1e6f, 65504.0f, 1.0f}});
    const ReadPicture answer = roundTrip(picture, true, ImageFormat::OpenExr);
    EXPECT_EQ(answer.samples, (std::vector<float>{65504.0f, -65504.0f, 65504.0f, 1.0f}));
}

TEST(SaveImageValuesTest, SharedExponentsAreRoundedToTheNearestStep) {
    // The highest value of a pixel sets the step; the others lie between two multiples of it. The
    // highest of the second pixel is rounded up to 1, which doubles the step.
    const float step = 1.0f / 128.0f;
    const TestPicture picture({3, 1}, {{1.0f, 10.4f * step, 20.6f * step, 1.0f},
                                       {0.999f, 10.4f * step, 0.0f, 1.0f},
                                       {0.0f, -1.0f, 1e-35f, 1.0f}});
    const ReadPicture answer = roundTrip(picture, true, ImageFormat::RadianceHdr);
    EXPECT_EQ(answer.samples, (std::vector<float>{1.0f, 10.0f * step, 21.0f * step, 1.0f,
                                                  10.0f * step, 0.0f, 0.0f, 0.0f, 0.0f}));
}

TEST(SaveImageSettingsTest, EveryCompressionKeepsThePicture) {
    const std::set<String> lossy = {"b44", "b44a", "dwaa", "dwab"};
    const TestPicture picture = TestPicture::random({40, 70}, true, 0.0f, 1.0f);
    for (const ImageFormatInfo& info : getImageFormats()) {
        const ReadPicture usual = roundTrip(picture, true, info.format);
        for (const String& compression : info.compressions) {
            const ReadPicture answer =
                roundTrip(picture, true, info.format,
                          {.bitDepth = {}, .quality = {}, .compression = compression});
            if (info.format == ImageFormat::OpenExr) {
                EXPECT_EQ(answer.spec.get_string_attribute("compression").substr(0, 3),
                          compression.toUtf8().substr(0, 3));
            }
            if (!lossy.contains(compression)) {
                EXPECT_EQ(answer.samples, usual.samples) << compression.toUtf8();
            }
        }
    }
}

TEST(SaveImageSettingsTest, QualityIsTradedForSize) {
    const TestPicture picture = TestPicture::random({64, 64}, false, 0.0f, 1.0f);
    const TestFolder folder;
    for (const ImageFormat format : {ImageFormat::Jpeg, ImageFormat::WebP}) {
        const Path path = pathOf(folder, getImageFormatInfo(format));
        std::size_t previous = 0;
        for (const int quality : {10, 60, 100}) {
            ASSERT_TRUE(saveImage(path, picture, false, {},
                                  {.bitDepth = {}, .quality = quality, .compression = {}},
                                  TaskProgress()));
            const std::size_t bytes = readBytes(path).size();
            EXPECT_GT(bytes, previous);
            previous = bytes;
        }
    }
}

TEST(SaveImageTagsTest, OnlyMappedPicturesAreTaggedAsSrgb) {
    const TestPicture picture({1, 1}, false);
    const TestFolder folder;
    for (const bool isData : {false, true}) {
        const ReadPicture jpeg = roundTrip(picture, isData, ImageFormat::Jpeg);
        EXPECT_EQ(jpeg.spec.get_int_attribute("Exif:ColorSpace"), isData ? 0 : 1);
        const ReadPicture tiff = roundTrip(picture, isData, ImageFormat::Tiff);
        EXPECT_EQ(tiff.spec.get_string_attribute("ICCProfile:profile_description"),
                  isData ? "" : "sRGB");
        const ReadPicture exr = roundTrip(picture, isData, ImageFormat::OpenExr);
        EXPECT_EQ(exr.spec.get_string_attribute("oiio:ColorSpace"), "Linear");
        // The reader takes every PNG for sRGB, so the file itself is asked for its chunks.
        const Path path = folder / "chunks.png";
        ASSERT_TRUE(saveImage(path, picture, isData, {}, {}, TaskProgress()));
        const std::string png = readBytes(path);
        EXPECT_EQ(png.find("sRGB") != std::string::npos, !isData);
        EXPECT_EQ(png.find("gAMA") != std::string::npos, !isData);
    }
}

TEST(SaveImageTagsTest, AlphaIsToldApartAsTheFormatsExpect) {
    const TestPicture picture = TestPicture::random({8, 8}, true, 0.0f, 1.0f);
    // Where a format can say that alpha has been multiplied into the colours, it does.
    const ReadPicture tiff = roundTrip(picture, false, ImageFormat::Tiff);
    EXPECT_EQ(tiff.spec.get_int_attribute("tiff:UnassociatedAlpha"), 0);
    const ReadPicture targa = roundTrip(picture, false, ImageFormat::Targa);
    EXPECT_EQ(targa.spec.get_int_attribute("oiio:UnassociatedAlpha"), 1);
}

TEST(SaveImageTagsTest, WebPKeepsAlpha) {
    const TestPicture picture = TestPicture::random({9, 5}, true, 0.0f, 1.0f);
    const ReadPicture answer = roundTrip(picture, false, ImageFormat::WebP);
    ASSERT_EQ(answer.spec.nchannels, 4);
    for (std::size_t i = 0; i < picture.pixels().size(); ++i) {
        EXPECT_NEAR(answer.at(i, 3), quantized(picture.pixels()[i].a, 8), 1e-6);
    }
}

TEST(SaveImageFileTest, AnExplicitFormatWinsOverTheName) {
    const TestFolder folder;
    const Path path = folder / "picture.png";
    const TestPicture picture = TestPicture::random({40, 40}, false, 0.0f, 1.0f);
    for (const ImageFormatInfo& info : getImageFormats()) {
        ASSERT_TRUE(saveImage(path, picture, false, info.format, {}, TaskProgress()));
        const Path renamed = pathOf(folder, info);
        std::filesystem::rename(path.std(), renamed.std());
        const ReadPicture answer = readPicture(renamed);
        EXPECT_EQ(answer.spec.width, 40) << info.name.toUtf8();
    }
}

TEST(SaveImageFileTest, SavesSeveralPicturesAtOnce) {
    const TestFolder folder;
    const TestPicture picture = TestPicture::random({120, 300}, false, 0.0f, 1.0f);
    std::vector<std::future<bool>> saves;
    for (const ImageFormatInfo& info : getImageFormats()) {
        saves.push_back(std::async(std::launch::async, [&, path = pathOf(folder, info)] {
            return saveImage(path, picture, false, {}, {}, TaskProgress()).has_value();
        }));
    }
    for (std::size_t i = 0; i < saves.size(); ++i) {
        const ImageFormatInfo& info = getImageFormats()[i];
        EXPECT_TRUE(saves[i].get()) << info.name.toUtf8();
        EXPECT_EQ(readPicture(pathOf(folder, info)).spec.height, 300);
    }
}

TEST(SaveImageFileTest, TellsHowFarItHasCome) {
    const TestFolder folder;
    std::vector<float> fractions;
    ASSERT_TRUE(saveImage(folder / "picture.tga", TestPicture({2, 1000}, false), false, {}, {},
                          TaskProgress([&](float fraction) { fractions.push_back(fraction); })));
    EXPECT_GT(fractions.size(), 2u);
    EXPECT_TRUE(std::ranges::is_sorted(fractions));
    EXPECT_EQ(fractions.back(), 1.0f);
}

}  // namespace
}  // namespace tavrin::imageio
