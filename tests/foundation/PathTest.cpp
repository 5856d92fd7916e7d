#include "foundation/BinaryFileInputStream.h"
#include "foundation/BinaryFileOutputStream.h"
#include "foundation/Exception.h"
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
        {"night.TXR", "", "night.TXR", "night", "TXR"},
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

TEST(Path, Joining) {
    EXPECT_EQ((Path(String("a")) / "b.exr").generic(), "a/b.exr");
    EXPECT_EQ(Path(String("a/b.exr")).withFileName("c.exr").generic(), "a/c.exr");
    EXPECT_EQ(Path(String("b.exr")).withFileName("c.exr").generic(), "c.exr");
}

TEST(Path, FileWhoseNameIsNotUtf8CanBeUsed) {
    const tests::TemporaryFolder folder;
    const Path path = folder / "caf\xE9.exr";
    {
        BinaryFileOutputStream stream(path);
        stream.write("x", 1);
        stream.commit();
    }
    EXPECT_EQ(BinaryFileInputStream(path).getSize(), 1u);
    EXPECT_EQ(path.fileName(), u"caf\uFFFD.exr");
}

}  // namespace
}  // namespace tavrin
