#include "base/image/ChannelImage.h"
#include "foundation/StringArray.h"
#include "tests/support/Message.h"

#include <gtest/gtest.h>

#include <array>
#include <sstream>
#include <string>

namespace tavrin::image {

namespace {

using postcore::RenderElementInfo;

constexpr auto kRgb = ElementKind::Rgb;
constexpr auto kRgba = ElementKind::Rgba;
constexpr auto kMono = ElementKind::Mono;

/// With the float channels that are listed with spaces between them; "*" stands for R, G and B.
ChannelImage makeImage(const std::string& channels) {
    ChannelImage image({0, 0, 1, 1}, {0, 0, 1, 1}, 1.0f);
    std::istringstream words(channels);
    for (std::string word; words >> word;) {
        const String name = String::fromUtf8(word);
        for (const char* component : {"R", "G", "B"}) {
            image.addChannel(name.replaced("*", component));
        }
    }
    return image;
}

/// "name:kind:flags" for each element.
std::string describeElements(const ChannelImage& image) {
    static constexpr std::array kKinds = {"rgb", "rgba", "mono", "other"};
    std::string text;
    for (const ElementInfo& element : image.getElements()) {
        text += (text.empty() ? "" : " ") + element.name.toUtf8() + ":" +
                kKinds.at(std::size_t(element.kind)) + ":" + std::to_string(element.flags);
        EXPECT_TRUE(element.kind == ElementKind::Unsupported || image.hasElement(element));
    }
    return text;
}

RenderElementInfo record(std::uint32_t type, const char* name, std::uint32_t flags) {
    return RenderElementInfo(
        {{type}, {"In the renderer", name}, Flags<postcore::RenderElementFlag>::fromBits(flags)});
}

// 960 = 64 + 128 + 256 + 512: nothing is done to such elements.
TEST(Elements, KindsFollowFromTheChannels) {
    const std::array<const char*, 2> cases[] = {
        {"* A", ":rgba:0 A:mono:960"},
        {"A", ":other:960 A:mono:960"},
        {"R G", ":other:960"},
        {"K.R K.G K.A", "K:other:960"},
        {"K.* K.A K.Z", "K:other:960"},
        {"K.* K", "K:other:960"},
        {"Diffuse.Red a.b.c.R", "Diffuse:other:960 a.b.c:other:960"},
        // Denoised and Sqr before the last dot name an element only with R, G, B or A.
        {"Denoised.Z Sqr.X", "Denoised.Z:mono:960 Sqr.X:mono:960"},
        {"DenoisedKey.Z Sqr.A Sqr.X.Y", "DenoisedKey:other:960 Sqr:other:960 Sqr.X:other:960"},
        {"b a B.R Z", "B:other:960 Z:mono:960 a:mono:960 b:mono:960"},
        // Channels that the names of element and component would not lead to.
        {"Mask.", "Mask:other:960"},
        {".R G B", ":other:960"},
    };
    for (const auto& [channels, elements] : cases) {
        EXPECT_EQ(describeElements(makeImage(channels)), elements);
    }
    ChannelImage image = makeImage("*");
    image.setChannel(std::make_unique<Channel<std::uint32_t>>("A"));
    EXPECT_EQ(describeElements(image), ":rgb:0");
}

TEST(Elements, FlagsFollowFromNamesAndMetadata) {
    const struct {
        const char* channels;
        std::vector<RenderElementInfo> infos;
        const char* elements;
    } cases[] = {
        {"* A SqrBeauty.*", {}, ":rgba:24 SqrBeauty:rgb:2 A:mono:960"},
        {"* A SqrBeauty.* Denoised.*", {}, ":rgba:56 Denoised:rgb:2 SqrBeauty:rgb:2 A:mono:960"},
        {"Key.* SqrKey.* DenoisedKey.* SqrSqrKey.*",
         {},
         "DenoisedKey:rgb:2 Key:rgb:56 SqrKey:rgb:2 SqrSqrKey:rgb:2"},
        {"TAVRIN_FB_WEIGHTS TAVRIN_FB_IMPORTANCE",
         {},
         "TAVRIN_FB_IMPORTANCE:mono:962 TAVRIN_FB_WEIGHTS:mono:962"},
        {"TAVRIN_FB_WEIGHTS.*", {}, "TAVRIN_FB_WEIGHTS:rgb:0"},
        {"Hybrid.* VisibleNormals OptixNormals.* SqrHybrid.*",
         {},
         "Hybrid:rgb:2 OptixNormals:rgb:2 SqrHybrid:rgb:2 VisibleNormals:mono:960"},
        {"* A Fill.* Key.* Albedo.*",
         {record(1006, "Key", 48), record(7, "Albedo", 1 + 48), record(1006, "Fill", 32)},
         "Key:rgb:4 Fill:rgb:132 :rgba:0 Albedo:rgb:960 A:mono:960"},
        // A light select without colours ranks as one, but is none.
        {"* Key", {record(1006, "Key", 48)}, "Key:mono:960 :rgb:0"},
        // The first record of a name counts; auxiliary elements may be lights.
        {"Z.* Denoised.*",
         {record(9, "Z", 16), record(9, "Z", 0), record(1006, "Denoised", 48)},
         "Denoised:rgb:6 Z:rgb:256"},
        {"*", {record(9, "", 0)}, ":rgb:384"},
    };
    for (const auto& [channels, infos, elements] : cases) {
        ChannelImage image = makeImage(channels);
        image.setRenderElementInfos(infos);
        EXPECT_EQ(describeElements(image), elements);
    }
}

TEST(Elements, InteractiveElementsMatchByType) {
    const std::vector<RenderElementInfo> infos = {record(1, "LightMix Interactive", 1),
                                                  record(2003, "x", 2), record(2004, "y", 3)};
    for (const auto& [name, index] :
         {std::pair{kBloomGlareInteractive, 1u}, {kLightMixInteractive, 2u}, {String("y"), 2u}}) {
        EXPECT_EQ(findMatchingElementCoreInfo(infos, {name, kRgb, 0}), &infos[index]);
    }
    EXPECT_EQ(findMatchingElementCoreInfo(infos, {"In the renderer", kRgb, 0}), nullptr);
}

TEST(Elements, MetadataIsReadFromBothForms) {
    ChannelImage image = makeImage("Key.* Fill.*");
    image.setAttribute("tavrin.lightmix.elements", String("\"Key\" , Fill"));
    EXPECT_EQ(describeElements(image), "Key:rgb:964 Fill:rgb:964");
    // The newer form wins; items that are no records are passed over.
    const auto good = record(1006, "Key", 48);
    image.setAttribute("tavrin.elements",
                       Str::getExportStringArray({"nonsense", good.serializeToString(), "{}", ""}));
    EXPECT_EQ(image.getRenderElementInfos(), std::vector{good});
    image.setAttribute("tavrin.elements", 3);
    EXPECT_EQ(image.getRenderElementInfos().size(), 2u);
    image.setAttribute("tavrin.elements", String("\"never ends"));
    EXPECT_EQ(tests::messageOf([&image] { static_cast<void>(image.getElements()); }),
              "Incorrectly escaped string");
    // 9 MiB, and 65 537 items.
    for (const auto& [count, item] :
         {std::pair{9 << 10, std::u16string(1024, u'x')}, {65537, u"\"\","}}) {
        std::u16string text;
        for (int i = 0; i < count; ++i) {
            text += item;
        }
        image.setAttribute("tavrin.elements", String(text));
        EXPECT_EQ(tests::messageOf([&image] { static_cast<void>(image.getElements()); }),
                  "Its list of render elements is too long.");
    }
}

/// One letter for each rule that holds: displayable, denoise-capable, colour other than the beauty,
/// stored in TXR.
std::string getRules(const ElementInfo& element) {
    EXPECT_EQ(isSavableSeparately(element), isDisplayable(element));
    return std::string(isDisplayable(element) ? "d" : "") + (isDenoiseCapable(element) ? "n" : "") +
           (isColorElementOtherThanBeauty(element) ? "c" : "") +
           (isStoredInTxrByDefault(element) ? "t" : "");
}

TEST(Elements, RulesOverOneElement) {
    EXPECT_EQ(getRules({"", kRgb, 0}), "dt");
    EXPECT_EQ(getRules({"", kRgba, 8}), "dnt");
    EXPECT_EQ(getRules({"Key", kRgb, 4 + 960}), "dct");
    EXPECT_EQ(getRules({"Key", kRgb, 1 + 8}), "dnc");
    EXPECT_EQ(getRules({"Key", kRgba, 2 + 8}), "t");
    EXPECT_EQ(getRules({"Key", kMono, 8}), "t");
    EXPECT_EQ(getRules({"Key", ElementKind::Unsupported, 8}), "t");
    EXPECT_EQ(getRules({"A", kMono, 0}), "");
    EXPECT_EQ(getRules({"Denoised", kRgb, 2}), "");
    EXPECT_EQ(getRules({"DenoisedKey", kRgb, 0}), "dc");
}

TEST(Elements, NamesAreDerived) {
    EXPECT_EQ(getDenoisedElementName("Key"), "DenoisedKey");
    EXPECT_EQ(getVarianceElementName(""), "SqrBeauty");
    EXPECT_EQ(getVarianceElementName("Key"), "SqrKey");
    for (const char* name : {"", "A", "Key", "Beauty", "beauty"}) {
        EXPECT_EQ(getInternalName(getDisplayName(name)), name);
        EXPECT_FALSE(isDenoisedElementName(name) || isVarianceElementName(name));
    }
    EXPECT_EQ(getListLabel({"", kRgb, 32}), "BEAUTY [Denoised]");
    EXPECT_EQ(getListLabel({"A", kMono, 31}), "Alpha");
}

}  // namespace
}  // namespace tavrin::image
