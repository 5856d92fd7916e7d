#include "services/postcore/RenderElementInfo.h"

#include <gtest/gtest.h>

#include <vector>

namespace tavrin::postcore {
namespace {

TEST(RenderElementInfo, ReadsItsTextForm) {
    const auto info = RenderElementInfo::deserialize(
        R"( {"flags": 4294967295, "names": ["Key light", "K\u00e9y"], "type": 1006} )");
    ASSERT_TRUE(info) << info.error().toUtf8();
    EXPECT_EQ(info->getData().type, kLightSelectType);
    EXPECT_EQ(info->getData().names, (RenderElementInfo::Names{"Key light", u"K\u00E9y"}));
    EXPECT_EQ(info->getData().flags.bits(), 4294967295u);
    EXPECT_EQ(RenderElementInfo::deserialize(info->serializeToString()), info);
}

TEST(RenderElementInfo, MembersOfOthersAreKept) {
    const String text =
        R"({"type":7,"names":["a","b"],"flags":3,"mask":{"ids":[1,-2.5,null,"x"]},"":true})";
    const auto info = RenderElementInfo::deserialize(text);
    ASSERT_TRUE(info);
    EXPECT_EQ(info->serializeToString(), text);
    EXPECT_NE(*info, RenderElementInfo(info->getData()));
}

TEST(RenderElementInfo, RefusesOtherTexts) {
    const std::vector<const char*> texts = {
        "",
        "Key",
        "[]",
        "null",
        R"({"type":1,"names":["a","b"],"flags":3)",
        R"({"type":1,"names":["a","b"],"flags":3} x)",
        R"({"names":["a","b"],"flags":3})",
        R"({"type":-1,"names":["a","b"],"flags":3})",
        R"({"type":1.0,"names":["a","b"],"flags":3})",
        R"({"type":4294967296,"names":["a","b"],"flags":3})",
        R"({"type":"1","names":["a","b"],"flags":3})",
        R"({"type":1,"names":["a"],"flags":3})",
        R"({"type":1,"names":["a","b","c"],"flags":3})",
        R"({"type":1,"names":["a",2],"flags":3})",
        R"({"type":1,"names":{"a":"b"},"flags":3})",
        R"({"type":1,"names":["a","b"]})",
        R"({"type":1,"names":["a","b"],"flags":null})",
    };
    for (const char* text : texts) {
        const auto info = RenderElementInfo::deserialize(text);
        ASSERT_FALSE(info) << text;
        EXPECT_TRUE(info.error().endsWith(".")) << info.error().toUtf8();
    }
}

}  // namespace
}  // namespace tavrin::postcore
