#include "foundation/TextFile.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <string_view>

namespace tavrin {
namespace {

using testing::AllOf;
using testing::HasSubstr;

TEST(TextFile, IsDecoded) {
    const tests::TemporaryFolder folder;
    const struct {
        std::string_view bytes;
        String text;
    } cases[] = {
        {"caf\xC3\xA9\r\n", u"caf\u00E9\r\n"},   {"a\xFFz", u"a\uFFFDz"},
        {"\xEF\xBB\xBFtext", u"text"},           {"\xEF\xBB", u"\uFFFD"},
        {{"\0x", 2}, std::u16string(u"\0x", 2)}, {"", u""},
    };
    for (const auto& [bytes, text] : cases) {
        std::ofstream((folder / "text").std()) << bytes;
        EXPECT_EQ(readTextFile(folder / "text", bytes.size()).value(), text);
    }
}

TEST(TextFile, FailuresNameTheFile) {
    const tests::TemporaryFolder folder;
    std::ofstream((folder / "long").std()) << "123456";
    const struct {
        Path path;
        const char* reason;
    } cases[] = {
        {folder / "long", "is too long"},
        {folder / "missing", "No such file"},
        {folder.path(), "it is a folder"},
    };
    for (const auto& [path, reason] : cases) {
        const Result<String> text = readTextFile(path, 5);
        ASSERT_FALSE(text);
        EXPECT_THAT(text.error().toUtf8(),
                    AllOf(HasSubstr(path.native().toUtf8()), HasSubstr(reason)));
    }
}

}  // namespace
}  // namespace tavrin
