#include "base/image/Exr.h"
#include "tests/support/TemporaryFolder.h"

#include "TestExr.h"
#include <ImfInputFile.h>
#include <ImfMatrixAttribute.h>
#include <ImfStandardAttributes.h>
#include <ImfVersion.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <bit>
#include <limits>

namespace tavrin::image {
namespace {

using Doubles = std::numeric_limits<double>;
using Floats = std::numeric_limits<float>;

ChannelImage load(const Path& path) {
    Result<ChannelImage> image = ExrLoader().load(path);
    EXPECT_TRUE(image.has_value()) << image.error().toUtf8();
    return image ? *std::move(image) : ChannelImage();
}

ChannelImage saveAndLoad(const ChannelImage& image) {
    const tests::TemporaryFolder folder;
    const Path path = folder / "saved.txr";
    const Result<void> saved = ExrSaver().save(image, path);
    EXPECT_TRUE(saved.has_value()) << saved.error().toUtf8();
    EXPECT_EQ(readPlanes(path), getPlanes(image));
    return load(path);
}

ChannelImage makeBeauty() {
    return makeImage({0, 0, 5, 4}, {0, 0, 5, 4}, {"R", "G", "B"});
}

TEST(ExrRoundTrip, KeepsAttributesOfEveryType) {
    ChannelImage image = makeBeauty();
    const auto add = [&image]<class... T>(const char* name, T... values) {
        int number = 0;
        (image.setAttribute(String(name) + String::fromUtf8(std::to_string(number++)), values),
         ...);
    };
    add("int", 0, -1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
    add("float", -0.0f, Floats::denorm_min(), -Floats::infinity(), Floats::max());
    add("double", 1.0 / 3.0, Doubles::denorm_min(), -Doubles::infinity(), Doubles::lowest());
    add("string", String(), String(u"z\u00E1\u0159\u4E16\U0001F600\0 end"), String("a\n\"\\"),
        String(std::u16string(100000, u'x')), String(std::u16string(u"a\0b", 3)));
    add("v3f", Rgb{1.5f, -2.0f, Floats::infinity()});
    add("v2i", Pixel{-3, std::numeric_limits<int>::max()});
    add("box2i", Bucket{-5, -6, 7, 8}, Bucket{0, 0, 0, 0},
        Bucket{std::numeric_limits<int>::min() + 1, 0, std::numeric_limits<int>::max(), 1});
    image.setAttribute("nan", std::bit_cast<float>(0x7FC12345u));
    image.setAttribute("doubleNan", Doubles::quiet_NaN());
    image.setAttribute("a name that is longer than thirty-one characters", 1);
    image.setAttribute("only in memory", true);

    const ChannelImage loaded = saveAndLoad(image);
    for (const auto& [name, attribute] : image.getAttributes()) {
        const auto found = loaded.getAttributes().find(name);
        ASSERT_EQ(found != loaded.getAttributes().end(), name != "only in memory") << name.toUtf8();
        if (found != loaded.getAttributes().end() && !name.contains("nan") &&
            !name.contains("Nan")) {
            EXPECT_TRUE(found->second->equals(*attribute)) << name.toUtf8();
        }
    }
    EXPECT_EQ(std::bit_cast<std::uint32_t>(loaded.getAttribute<float>("nan")), 0x7FC12345u);
    EXPECT_NE(loaded.getAttribute<double>("doubleNan"), loaded.getAttribute<double>("doubleNan"));
    EXPECT_EQ(std::bit_cast<std::uint32_t>(loaded.getAttribute<float>("float0")), 0x80000000u);
}

TEST(ExrRoundTrip, NamesOfAttributesBecomeAscii) {
    ChannelImage image = makeBeauty();
    image.setAttribute(u"h\u00E9t\u4E16", 1);
    image.setAttribute(u"x\U0001F600y", 2);
    image.setAttribute(u"\xDC00", 3);
    image.setAttribute(u"\xD800", 4);
    const ChannelImage loaded = saveAndLoad(image);
    EXPECT_EQ(loaded.getAttribute<int>("h_t_"), 1);
    EXPECT_EQ(loaded.getAttribute<int>("x_y"), 2);
    // Two attributes of one name: the first in order of names stays.
    EXPECT_EQ(loaded.getAttribute<int>("_"), 4);
}

TEST(ExrRoundTrip, FieldsOfTheWriterAreNotReplaced) {
    const tests::TemporaryFolder folder;
    TestExr{.tiles = {16, 16},
            .change =
                [](Imf::Header& header) {
                    header.pixelAspectRatio() = 2.0f;
                    header.screenWindowWidth() = 3.0f;
                    header.insert("matrix", Imf::M44fAttribute());
                    header.insert("note", Imf::StringAttribute("kept"));
                }}
        .write(folder / "tiled.exr");
    const ChannelImage image = load(folder / "tiled.exr");
    EXPECT_EQ(image.getAttribute<float>("pixelAspectRatio"), 2.0f);
    const ChannelImage again = saveAndLoad(image);
    EXPECT_EQ(again.getAttribute<float>("pixelAspectRatio"), 1.0f);
    EXPECT_EQ(again.getAttribute<float>("screenWindowWidth"), 1.0f);
    EXPECT_EQ(again.getAttribute<String>("note"), "kept");
    EXPECT_FALSE(again.getAttributes().contains("matrix"));
    EXPECT_EQ(getPlanes(again), getPlanes(image));

    ASSERT_TRUE(ExrSaver().save(image, folder / "lines.exr"));
    const Imf::InputFile file((folder / "lines.exr").std().c_str());
    EXPECT_FALSE(Imf::isTiled(file.version()));
    EXPECT_EQ(file.header().compression(), Imf::ZIP_COMPRESSION);
    EXPECT_EQ(file.header().lineOrder(), Imf::INCREASING_Y);
}

/// Names that have a meaning of their own for the library.
TEST(ExrRoundTrip, AttributesWithReservedNamesDoNoHarm) {
    for (const char* name :
         {"type", "name", "view", "version", "chunkCount", "tiles", "preview", "multiView",
          "maxSamplesPerPixel", "dwaCompressionLevel", "zipCompressionLevel", "compression",
          "channels", "lineOrder", "dataWindow ", "chromaticities", "deepImageState"}) {
        SCOPED_TRACE(name);
        for (const int kind : {0, 1, 2, 3}) {
            ChannelImage image = makeBeauty();
            switch (kind) {
                case 0:
                    image.setAttribute(String(name), 12345);
                    break;
                case 1:
                    image.setAttribute(String(name), -1e30f);
                    break;
                case 2:
                    image.setAttribute(String(name), String("deepscanline"));
                    break;
                default:
                    image.setAttribute(String(name), Floats::quiet_NaN());
            }
            const ChannelImage loaded = saveAndLoad(image);
            EXPECT_EQ(getPlanes(loaded), getPlanes(image));
            EXPECT_EQ(getPlanes(saveAndLoad(loaded)), getPlanes(image));
        }
    }
}

RC_GTEST_PROP(ExrRoundTrip, ChannelsComeBackBitForBit, ()) {
    const int x = *rc::gen::inRange(-2000, 2000);
    const int y = *rc::gen::inRange(-2000, 2000);
    const Bucket data{x, y, x + *rc::gen::inRange(1, 70), y + *rc::gen::inRange(1, 70)};
    const Bucket display = *rc::gen::arbitrary<bool>()
                               ? Bucket{data.x0 - 3, data.y0, data.x1 + 9, data.y1 + 1}
                               : Bucket{data.x0, data.y0, data.x0 + 1, data.y1};
    ChannelImage image =
        makeImage(display, data, {"R", "G", "B", u"Sv\u011Btlo \U0001F600.R", "a.b.c", "R.R"});
    auto integers = std::make_unique<Channel<std::uint32_t>>("Id");
    integers->resize(data.size());
    for (std::uint32_t& value : integers->getValues()) {
        value = *rc::gen::arbitrary<std::uint32_t>();
    }
    // Any bits may stand for a float, those of signalling NaNs too.
    std::ranges::transform(integers->getValues(), image.getChannel<float>("R").getData(),
                           [](std::uint32_t bits) { return std::bit_cast<float>(bits); });
    image.setChannel(std::move(integers));
    const ChannelImage loaded = saveAndLoad(image);
    RC_ASSERT(getPlanes(loaded) == getPlanes(image));
    RC_ASSERT(loaded.getDataWindow() == data);
    RC_ASSERT(loaded.getDisplayWindow() == display);
}

}  // namespace
}  // namespace tavrin::image
