#include "services/imageio/SaveImage.h"
#include "tests/services/imageio/ReadPicture.h"
#include "tests/services/imageio/TestPicture.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
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

Path pathOf(const tests::TemporaryFolder& folder, const ImageFormatInfo& info) {
    return folder / ("picture." + info.extensions.front().toUtf8());
}

/// Saves and reads back.
ReadPicture roundTrip(const TestPicture& picture, bool isData, ImageFormat format,
                      const ImageSaveSettings& settings = {}) {
    const tests::TemporaryFolder folder;
    const Path path = pathOf(folder, getImageFormatInfo(format));
    const Result<void> answer = saveImage(path, picture, isData, {}, settings, TaskProgress());
    if (!answer) {
        ADD_FAILURE() << answer.error().toUtf8();
        return {};
    }
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

bool isLossy(ImageFormat format) {
    return format == ImageFormat::Jpeg || format == ImageFormat::WebP;
}

/// How far a sample of a file may be from what was given, for values up to 1.2.
double toleranceOf(const Case& sample) {
    if (isLossy(sample.format)) {
        return 0.03;
    }
    if (sample.format == ImageFormat::RadianceHdr) {
        return 1.0 / 256.0;
    }
    // The reader spreads the levels of DPX over 16 bits.
    return sample.depth == BitDepth::Half      ? 1.0 / 2048.0
           : sample.format == ImageFormat::Dpx ? 1.0 / 65535.0
                                               : 1e-7;
}

/// What a sample of a picture with data should be in a file.
double expectedSample(const Case& sample, float value) {
    if (sample.format == ImageFormat::RadianceHdr) {
        return std::max(value, 0.0f);
    }
    return isFloatingPoint(sample.depth) ? value : quantized(value, getBitCount(sample.depth));
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
    for (const Pixel size : {Pixel{1, 1}, Pixel{7, 3}, Pixel{1, 40}, Pixel{33, 300}}) {
        for (const bool hasAlpha : {false, true}) {
            if (std::min(size.x, size.y) < info.minimumSide) {
                continue;
            }
            // Lossy formats are only close to one colour that covers everything.
            const TestPicture picture =
                isLossy(format) ? TestPicture::uniform(size, hasAlpha, {0.2f, 0.7f, 0.4f, 1.0f})
                                : TestPicture::random(size, hasAlpha, -0.1f, 1.2f);
            const ReadPicture answer = roundTrip(picture, true, format, withDepth(depth));
            ASSERT_EQ(answer.spec.width, size.x);
            ASSERT_EQ(answer.spec.height, size.y);
            // The lossy pictures are opaque, and WebP keeps no alpha that is 1 everywhere.
            const bool keepsAlpha = hasAlpha && info.carriesAlpha && !isLossy(format);
            ASSERT_EQ(answer.spec.nchannels, keepsAlpha ? 4 : 3);
            EXPECT_EQ(answer.getBits(), getBitCount(depth));
            for (std::size_t i = 0; i < picture.pixels().size(); ++i) {
                const Rgba& pixel = picture.pixels()[i];
                const float given[] = {pixel.r, pixel.g, pixel.b, pixel.a};
                for (int channel = 0; channel < answer.spec.nchannels; ++channel) {
                    if (!isLostByReader(GetParam(), answer.spec, i, channel)) {
                        ASSERT_NEAR(answer.at(i, channel),
                                    expectedSample(GetParam(), given[channel]),
                                    toleranceOf(GetParam()))
                            << "pixel " << i << " channel " << channel;
                    }
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
    const std::vector<float> color(answer.samples.begin(), answer.samples.begin() + 3);
    if (format == ImageFormat::RadianceHdr) {
        EXPECT_EQ(color[0], 0.0f);
        EXPECT_TRUE(color[1] > 1e38f && std::isfinite(color[1]));
        EXPECT_EQ(color[2], 0.0f);
    } else if (isFloatingPoint(depth)) {
        EXPECT_TRUE(std::isnan(color[0]));
        EXPECT_EQ(color[1], kInfinity);
        EXPECT_EQ(color[2], -kInfinity);
    } else {
        EXPECT_THAT(color, testing::Pointwise(testing::FloatNear(0.05f), {0.0f, 1.0f, 0.0f}));
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, SaveImageTest, testing::ValuesIn(allCases()),
                         [](const testing::TestParamInfo<Case>& info) {
                             return (getImageFormatInfo(info.param.format).name + "_" +
                                     toString(info.param.depth))
                                 .toUtf8();
                         });

TEST(SaveImageValuesTest, LinearFormatsGetLinearLightOfMappedPictures) {
    const TestPicture picture({2, 1}, {{0.02f, 0.04045f, 0.5f, 0.25f}, {0.9f, 1.0f, 4.0f, 1.0f}});
    const ReadPicture exr =
        roundTrip(picture, false, ImageFormat::OpenExr, withDepth(BitDepth::Float));
    const ReadPicture hdr = roundTrip(picture, false, ImageFormat::RadianceHdr);
    for (std::size_t i = 0; i < picture.pixels().size(); ++i) {
        const Rgba& pixel = picture.pixels()[i];
        const double wanted[] = {linearLight(pixel.r), linearLight(pixel.g), linearLight(pixel.b)};
        for (int channel = 0; channel < 3; ++channel) {
            EXPECT_NEAR(exr.at(i, channel), wanted[channel], 1e-6 * wanted[2]);
            // Half a step of the shared exponent, which is at least 1/256 of the highest value.
            EXPECT_NEAR(hdr.at(i, channel), wanted[channel], wanted[2] / 256.0);
        }
        EXPECT_EQ(exr.at(i, 3), pixel.a);
    }
}

TEST(SaveImageValuesTest, FloatingPointTiffKeepsMappedValuesAndHalvesStayFinite) {
    const TestPicture mapped({2, 1}, {{-0.5f, 0.25f, 0.5f, 0.5f}, {1.5f, 20.0f, 1.0f, 0.0f}});
    EXPECT_EQ(roundTrip(mapped, false, ImageFormat::Tiff, withDepth(BitDepth::Float)).samples,
              (std::vector<float>{-0.5f, 0.25f, 0.5f, 0.5f, 1.5f, 20.0f, 1.0f, 0.0f}));
    const TestPicture high({1, 1}, {{1e6f, -1e6f, 65504.0f, 1.0f}});
    EXPECT_EQ(roundTrip(high, true, ImageFormat::OpenExr).samples,
              (std::vector<float>{65504.0f, -65504.0f, 65504.0f, 1.0f}));
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
    const tests::TemporaryFolder folder;
    for (const ImageFormat format : {ImageFormat::Jpeg, ImageFormat::WebP}) {
        std::uintmax_t previous = 0;
        for (const int quality : {10, 60, 100}) {
            const Path path = folder / "picture";
            ASSERT_TRUE(saveImage(path, picture, false, format,
                                  {.bitDepth = {}, .quality = quality, .compression = {}},
                                  TaskProgress()));
            const auto bytes = std::filesystem::file_size(path.std());
            EXPECT_GT(bytes, previous);
            previous = bytes;
        }
    }
}

TEST(SaveImageTagsTest, OnlyMappedPicturesAreTaggedAsSrgb) {
    const TestPicture picture({1, 1}, false);
    const tests::TemporaryFolder folder;
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
    const ReadPicture webP = roundTrip(picture, false, ImageFormat::WebP);
    ASSERT_EQ(webP.spec.nchannels, 4);
    for (std::size_t i = 0; i < picture.pixels().size(); ++i) {
        EXPECT_NEAR(webP.at(i, 3), quantized(picture.pixels()[i].a, 8), 1e-6);
    }
}

TEST(SaveImageFileTest, SavesSeveralPicturesAtOnceWhoseFormatsWinOverTheirNames) {
    const tests::TemporaryFolder folder;
    const TestPicture picture = TestPicture::random({120, 300}, false, 0.0f, 1.0f);
    std::vector<std::future<bool>> saves;
    const auto pathOf = [&](const ImageFormatInfo& info) {
        return folder / (info.name.toUtf8() + ".png");
    };
    for (const ImageFormatInfo& info : getImageFormats()) {
        saves.push_back(std::async(std::launch::async, [&] {
            return saveImage(pathOf(info), picture, false, info.format, {}, TaskProgress())
                .has_value();
        }));
    }
    for (std::size_t i = 0; i < saves.size(); ++i) {
        const ImageFormatInfo& info = getImageFormats()[i];
        EXPECT_TRUE(saves[i].get()) << info.name.toUtf8();
        const auto input = OIIO::ImageInput::open(pathOf(info).std().string());
        ASSERT_TRUE(input) << info.name.toUtf8();
        EXPECT_EQ(input->spec().height, 300);
    }
}

TEST(SaveImageFileTest, TellsHowFarItHasCome) {
    const tests::TemporaryFolder folder;
    std::vector<float> fractions;
    ASSERT_TRUE(saveImage(folder / "picture.tga", TestPicture({2, 1000}, false), false, {}, {},
                          TaskProgress([&](float fraction) { fractions.push_back(fraction); })));
    EXPECT_GT(fractions.size(), 2u);
    EXPECT_TRUE(std::ranges::is_sorted(fractions));
    EXPECT_EQ(fractions.back(), 1.0f);
}

}  // namespace
}  // namespace tavrin::imageio
