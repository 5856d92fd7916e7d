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
#include <cmath>
#include <limits>

namespace tavrin::image {
namespace {

using Doubles = std::numeric_limits<double>;
using Floats = std::numeric_limits<float>;

ChannelImage saveAndLoad(const ChannelImage& image) {
    const tests::TemporaryFolder folder;
    const Path path = folder / "saved.txr";
    const Result<void> saved = ExrSaver().save(image, path);
    EXPECT_TRUE(saved.has_value()) << saved.error().toUtf8();
    EXPECT_EQ(readPlanes(path), getPlanes(image));
    return loadExr(path);
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
    image.setAttribute("a name that is longer than thirty-one characters", 1);
    const ChannelImage loaded = saveAndLoad(image);
    for (const auto& [name, attribute] : image.getAttributes()) {
        const auto found = loaded.getAttributes().find(name);
        ASSERT_TRUE(found != loaded.getAttributes().end()) << name.toUtf8();
        EXPECT_TRUE(found->second->equals(*attribute)) << name.toUtf8();
    }
    EXPECT_TRUE(std::signbit(loaded.getAttribute<float>("float0")));

    image.setAttribute("nan", std::bit_cast<float>(0x7FC12345u));
    image.setAttribute("only in memory", true);
    const ChannelImage again = saveAndLoad(image);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(again.getAttribute<float>("nan")), 0x7FC12345u);
    EXPECT_FALSE(again.getAttributes().contains("only in memory"));
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
    const auto change = [](Imf::Header& header) {
        header.pixelAspectRatio() = 2.0f;
        header.screenWindowWidth() = 3.0f;
        header.insert("matrix", Imf::M44fAttribute());
        header.insert("note", Imf::StringAttribute("kept"));
    };
    TestExr{.tiles = {16, 16}, .change = change}.write(folder / "tiled.exr");
    const ChannelImage image = loadExr(folder / "tiled.exr");
    EXPECT_EQ(image.getAttribute<float>("pixelAspectRatio"), 2.0f);
    ASSERT_TRUE(ExrSaver().save(image, folder / "lines.exr"));
    const Imf::InputFile file((folder / "lines.exr").std().c_str());
    const Imf::Header& header = file.header();
    EXPECT_FALSE(Imf::isTiled(file.version()));
    EXPECT_EQ(header.compression(), Imf::ZIP_COMPRESSION);
    EXPECT_EQ(header.pixelAspectRatio(), 1.0f);
    EXPECT_EQ(header.screenWindowWidth(), 1.0f);
    EXPECT_EQ(header.typedAttribute<Imf::StringAttribute>("note").value(), "kept");
    EXPECT_EQ(header.findTypedAttribute<Imf::M44fAttribute>("matrix"), nullptr);
}

/// Names that have a meaning of their own for the library.
TEST(ExrRoundTrip, AttributesWithReservedNamesDoNoHarm) {
    for (const char* name :
         {"type", "name", "view", "version", "chunkCount", "tiles", "preview", "multiView",
          "maxSamplesPerPixel", "dwaCompressionLevel", "zipCompressionLevel", "compression",
          "channels", "lineOrder", "dataWindow ", "chromaticities", "deepImageState"}) {
        SCOPED_TRACE(name);
        const auto check = [name](const auto& value) {
            ChannelImage image = makeBeauty();
            image.setAttribute(String(name), value);
            EXPECT_EQ(getPlanes(saveAndLoad(saveAndLoad(image))), getPlanes(image));
        };
        check(12345);
        check(Floats::quiet_NaN());
        check(String("deepscanline"));
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
    auto& integers = addIntegers(image);
    integers.resize(data.size());
    for (std::uint32_t& value : integers.getValues()) {
        value = *rc::gen::arbitrary<std::uint32_t>();
    }
    // Any bits may stand for a float, those of signalling NaNs too.
    std::ranges::transform(integers.getValues(), image.getChannel<float>("R").getData(),
                           [](std::uint32_t bits) { return std::bit_cast<float>(bits); });
    const ChannelImage loaded = saveAndLoad(image);
    RC_ASSERT(getPlanes(loaded) == getPlanes(image));
    RC_ASSERT(loaded.getDataWindow() == data);
    RC_ASSERT(loaded.getDisplayWindow() == display);
}

}  // namespace
}  // namespace tavrin::image
