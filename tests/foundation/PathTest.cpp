#include "foundation/BinaryFileInputStream.h"
#include "foundation/BinaryFileOutputStream.h"
#include "foundation/Path.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace tavrin {
namespace {

TEST(Path, Parts) {
    const struct {
        String path, parent, fileName, stem, extension;
    } cases[] = {
        {"/renders/night.v2.exr", "/renders", "night.v2.exr", "night.v2", "exr"},
        {"../night", "..", "night", "night", ""},
        {"folder.d/night", "folder.d", "night", "night", ""},
        {"folder/", "folder", "", "", ""},
        {".hidden", "", ".hidden", ".hidden", ""},
        {"night.", "", "night.", "night", ""},
        {u"/\u6E32\u67D3/\u591C \u666F.exr", u"/\u6E32\u67D3", u"\u591C \u666F.exr",
         u"\u591C \u666F", "exr"},
        {"", "", "", "", ""},
    };
    for (const auto& [text, parent, fileName, stem, extension] : cases) {
        const Path path(text);
        SCOPED_TRACE(text.toUtf8());
        EXPECT_EQ(path.native(), text);
        EXPECT_EQ(path.parent().native(), parent);
        EXPECT_EQ(path.fileName(), fileName);
        EXPECT_EQ(path.stem(), stem);
        EXPECT_EQ(path.extension(), extension);
    }
}

TEST(Path, FileWhoseNameIsNotUtf8CanBeUsed) {
    const tests::TemporaryFolder folder;
    const Path path = folder / "caf\xE9.exr";
    BinaryFileOutputStream(path).commit();
    EXPECT_EQ(BinaryFileInputStream(path).getSize(), 0u);
    EXPECT_EQ(path.fileName(), u"caf\uFFFD.exr");
}

}  // namespace
}  // namespace tavrin
