#include "base/image/ChannelImage.h"
#include "foundation/StringArray.h"
#include "tests/support/ArbitraryText.h"
#include "tests/support/Message.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>

namespace tavrin::image {

void PrintTo(const ElementInfo& element, std::ostream* stream) {
    *stream << '"' << element.name.toUtf8() << "\" " << int(element.kind) << ' ' << element.flags;
}

namespace {

using postcore::RenderElementInfo;
using Names = std::vector<String>;
using Elements = std::vector<ElementInfo>;

constexpr auto kRgb = ElementKind::Rgb;
constexpr auto kRgba = ElementKind::Rgba;
constexpr auto kMono = ElementKind::Mono;
constexpr auto kUnsupported = ElementKind::Unsupported;
// 64 + 128 + 256 + 512
constexpr std::uint32_t kNoPost = 960;

Names colors(const String& element) {
    return {joinChannelName(element, "R"), joinChannelName(element, "G"),
            joinChannelName(element, "B")};
}

ChannelImage makeImage(const std::vector<Names>& channels) {
    ChannelImage image({0, 0, 1, 1}, {0, 0, 1, 1}, 1.0f);
    for (const Names& names : channels) {
        for (const String& name : names) {
            image.addChannel(name);
        }
    }
    return image;
}

RenderElementInfo record(std::uint32_t type, const char* name, std::uint32_t flags) {
    return RenderElementInfo(
        {{type}, {"In the renderer", name}, Flags<postcore::RenderElementFlag>::fromBits(flags)});
}

TEST(Elements, ChannelNamesSplitAtTheLastDot) {
    struct Case {
        const char* channel;
        const char* element;
        const char* component;
    };
    for (const auto& [channel, element, component] : std::vector<Case>{
             {"R", "", "R"},
             {"A", "", "A"},
             {"r", "r", ""},
             {"Z", "Z", ""},
             {"", "", ""},
             {"Key.R", "Key", "R"},
             {"Diffuse.Red", "Diffuse", "Red"},
             {"a.b.c.R", "a.b.c", "R"},
             {"R.G", "R", "G"},
             {"R.", "", "R"},
             {".R", "", "R"},
             {"Mask.", "Mask", ""},
             {"..", ".", ""},
             {"Sqr", "Sqr", ""},
             {"Sqr.X", "Sqr.X", ""},
             {"Sqr.", "Sqr.", ""},
             {"Sqr.A", "Sqr", "A"},
             {"Sqr.X.Y", "Sqr.X", "Y"},
             {"SqrX.Y", "SqrX", "Y"},
             {"Denoised.Z", "Denoised.Z", ""},
             {"Denoised.B", "Denoised", "B"},
             {"DenoisedKey.Z", "DenoisedKey", "Z"},
         }) {
        const ChannelNameParts parts = splitChannelName(channel);
        EXPECT_EQ(parts.element, element) << channel;
        EXPECT_EQ(parts.component, component) << channel;
    }
}

TEST(Elements, KindsFollowFromTheChannels) {
    const std::vector<std::pair<Names, Elements>> cases = {
        {{}, {}},
        {{"R", "G", "B", "A"}, {{"", kRgba, 0}, {"A", kMono, kNoPost}}},
        {{"A"}, {{"", kUnsupported, kNoPost}, {"A", kMono, kNoPost}}},
        {{"R", "G"}, {{"", kUnsupported, kNoPost}}},
        {{"K.R", "K.G", "K.A"}, {{"K", kUnsupported, kNoPost}}},
        {{"K.R", "K.G", "K.B", "K.A", "K.Z"}, {{"K", kUnsupported, kNoPost}}},
        {{"K.R", "K.G", "K.B", "K"}, {{"K", kUnsupported, kNoPost}}},
        {{"Diffuse.Red"}, {{"Diffuse", kUnsupported, kNoPost}}},
        {{"Denoised.Z", "Sqr.X"}, {{"Denoised.Z", kMono, kNoPost}, {"Sqr.X", kMono, kNoPost}}},
        // Channels that the names of element and component would not lead to.
        {{"Mask."}, {{"Mask", kUnsupported, kNoPost}}},
        {{".R", "G", "B"}, {{"", kUnsupported, kNoPost}}},
        {{"b", "a", "B.R", "Z"},
         {{"B", kUnsupported, kNoPost},
          {"Z", kMono, kNoPost},
          {"a", kMono, kNoPost},
          {"b", kMono, kNoPost}}},
    };
    for (const auto& [channels, elements] : cases) {
        const ChannelImage image = makeImage({channels});
        EXPECT_EQ(image.getElements(), elements);
        for (const ElementInfo& element : elements) {
            EXPECT_TRUE(element.kind == kUnsupported || image.hasElement(element));
        }
    }
    ChannelImage image = makeImage({colors("")});
    image.setChannel(std::make_unique<Channel<std::uint32_t>>("Id"));
    image.setChannel(std::make_unique<Channel<std::uint32_t>>("A"));
    EXPECT_EQ(image.getElements(), (Elements{{"", kRgb, 0}}));
}

TEST(Elements, FlagsFollowFromNamesAndMetadata) {
    struct Case {
        std::vector<Names> channels;
        std::vector<RenderElementInfo> infos;
        Elements elements;
    };
    const Names rgba = {"R", "G", "B", "A"};
    const std::vector<Case> cases = {
        {{rgba, colors("SqrBeauty")},
         {},
         {{"", kRgba, 8 + 16}, {"SqrBeauty", kRgb, 2}, {"A", kMono, kNoPost}}},
        {{rgba, colors("SqrBeauty"), colors("Denoised")},
         {},
         {{"", kRgba, 8 + 16 + 32},
          {"Denoised", kRgb, 2},
          {"SqrBeauty", kRgb, 2},
          {"A", kMono, kNoPost}}},
        {{colors("Key"), colors("SqrKey"), colors("DenoisedKey"), colors("SqrSqrKey")},
         {},
         {{"DenoisedKey", kRgb, 2},
          {"Key", kRgb, 8 + 16 + 32},
          {"SqrKey", kRgb, 2},
          {"SqrSqrKey", kRgb, 2}}},
        {{{"TAVRIN_FB_WEIGHTS", "TAVRIN_FB_IMPORTANCE"}},
         {},
         {{"TAVRIN_FB_IMPORTANCE", kMono, 2 + kNoPost}, {"TAVRIN_FB_WEIGHTS", kMono, 2 + kNoPost}}},
        {{colors("TAVRIN_FB_WEIGHTS")}, {}, {{"TAVRIN_FB_WEIGHTS", kRgb, 0}}},
        {{colors("Hybrid"), {"VisibleNormals"}, colors("OptixNormals"), colors("SqrHybrid")},
         {},
         {{"Hybrid", kRgb, 2},
          {"OptixNormals", kRgb, 2},
          {"SqrHybrid", kRgb, 2},
          {"VisibleNormals", kMono, kNoPost}}},
        {{rgba, colors("Fill"), colors("Key"), colors("Albedo")},
         {record(1006, "Key", 48), record(7, "Albedo", 1 + 48), record(1006, "Fill", 32)},
         {{"Key", kRgb, 4},
          {"Fill", kRgb, 4 + 128},
          {"", kRgba, 0},
          {"Albedo", kRgb, kNoPost},
          {"A", kMono, kNoPost}}},
        // A light select without colours ranks as one, but is none.
        {{rgba, {"Key"}},
         {record(1006, "Key", 48)},
         {{"Key", kMono, kNoPost}, {"", kRgba, 0}, {"A", kMono, kNoPost}}},
        // The first record of a name counts; auxiliary elements may be lights.
        {{colors("Z"), colors("Denoised")},
         {record(9, "Z", 16), record(9, "Z", 0), record(1006, "Denoised", 48)},
         {{"Denoised", kRgb, 2 + 4}, {"Z", kRgb, 256}}},
        {{rgba}, {record(9, "", 0)}, {{"", kRgba, 128 + 256}, {"A", kMono, kNoPost}}},
    };
    for (const auto& [channels, infos, elements] : cases) {
        ChannelImage image = makeImage(channels);
        image.setRenderElementInfos(infos);
        EXPECT_EQ(image.getElements(), elements);
    }
}

TEST(Elements, InteractiveElementsMatchByType) {
    const std::vector<RenderElementInfo> infos = {record(1, "LightMix Interactive", 1),
                                                  record(2003, "x", 2), record(2004, "y", 3)};
    const auto flagsOf = [&infos](const String& name) {
        const RenderElementInfo* info = findMatchingElementCoreInfo(infos, {name, kRgb, 0});
        return info == nullptr ? 0 : info->getData().flags.bits();
    };
    EXPECT_EQ(flagsOf(kBloomGlareInteractive), 2u);
    EXPECT_EQ(flagsOf(kLightMixInteractive), 3u);
    EXPECT_EQ(flagsOf("y"), 3u);
    EXPECT_EQ(flagsOf("In the renderer"), 0u);
}

TEST(Elements, MetadataIsReadFromBothForms) {
    ChannelImage image = makeImage({colors("Key"), colors("Fill \"x\""), colors("")});
    EXPECT_TRUE(image.getRenderElementInfos().empty());
    image.setAttribute("tavrin.lightmix.elements", String(R"("Key", "Fill \"x\"")"));
    EXPECT_EQ(
        image.getElements(),
        (Elements{{"Key", kRgb, 4 + kNoPost}, {"Fill \"x\"", kRgb, 4 + kNoPost}, {"", kRgb, 0}}));
    const RenderElementInfo first = image.getRenderElementInfos().front();
    EXPECT_EQ(first.getData().names, (RenderElementInfo::Names{"Key", "Key"}));

    // The newer form wins; items that are no records are passed over.
    const auto good = record(1006, "Key", 48);
    image.setAttribute("tavrin.elements",
                       Str::getExportStringArray({"nonsense", good.serializeToString(), "{}", ""}));
    EXPECT_EQ(image.getRenderElementInfos(), std::vector{good});
    image.setAttribute("tavrin.elements", 3);
    EXPECT_EQ(image.getRenderElementInfos().size(), 2u);
    for (const char* name : {"tavrin.lightmix.elements", "tavrin.elements"}) {
        image.setAttribute(String(name), String("\"never ends"));
        EXPECT_EQ(tests::messageOf([&image] { static_cast<void>(image.getElements()); }),
                  "Incorrectly escaped string");
    }
}

RC_GTEST_PROP(Elements, MetadataSurvivesTheHeader, ()) {
    std::vector<RenderElementInfo> infos;
    for (const auto& units :
         *rc::gen::container<std::vector<std::vector<std::uint16_t>>>(tests::codeUnits())) {
        // Files hold UTF-8, which has no lone surrogates.
        const String name = String::fromUtf8(tests::toText(units).toUtf8());
        infos.emplace_back(RenderElementInfo::Data{
            {*rc::gen::arbitrary<std::uint32_t>()},
            {name + "1", name},
            Flags<postcore::RenderElementFlag>::fromBits(*rc::gen::arbitrary<std::uint32_t>())});
    }
    ChannelImage image;
    image.setRenderElementInfos(infos);
    RC_ASSERT(image.getRenderElementInfos() == infos);
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
    EXPECT_EQ(getRules({"Key", kRgb, 4 + kNoPost}), "dct");
    EXPECT_EQ(getRules({"Key", kRgb, 1 + 8}), "dnc");
    EXPECT_EQ(getRules({"Key", kRgba, 2 + 8}), "t");
    EXPECT_EQ(getRules({"Key", kMono, 8}), "t");
    EXPECT_EQ(getRules({"Key", kUnsupported, 8}), "t");
    EXPECT_EQ(getRules({"A", kMono, 0}), "");
    EXPECT_EQ(getRules({"Denoised", kRgb, 2}), "");
    EXPECT_EQ(getRules({"DenoisedKey", kRgb, 0}), "dc");
}

TEST(Elements, NamesAreDerived) {
    EXPECT_EQ(getDenoisedElementName(""), "Denoised");
    EXPECT_EQ(getDenoisedElementName("Key"), "DenoisedKey");
    EXPECT_EQ(getVarianceElementName(""), "SqrBeauty");
    EXPECT_EQ(getVarianceElementName("Key"), "SqrKey");
    for (const char* name : {"", "A", "Key", "Beauty", "beauty"}) {
        EXPECT_EQ(getInternalName(getDisplayName(name)), name);
        EXPECT_FALSE(isDenoisedElementName(name) || isVarianceElementName(name));
    }
    EXPECT_EQ(getDisplayName(""), "BEAUTY");
    EXPECT_EQ(getDisplayName("A"), "Alpha");
    EXPECT_EQ(getInternalName("Beauty"), "Beauty");
    EXPECT_EQ(getListLabel({"", kRgb, 32}), "BEAUTY [Denoised]");
    EXPECT_EQ(getListLabel({"A", kMono, 31}), "Alpha");
    EXPECT_EQ(joinChannelName("", ""), "");
}

}  // namespace
}  // namespace tavrin::image
