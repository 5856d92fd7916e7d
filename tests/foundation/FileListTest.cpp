#include "foundation/FileList.h"
#include "tests/support/Message.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

namespace tavrin {
namespace {

TEST(FileList, HasTheFilesOfOneExtensionInOrder) {
    const tests::TemporaryFolder folder;
    for (const char* name : {"b.ttm", "a.TTM", "c.ttm.bak", "ttm", "d.cube", "a.b.ttm"}) {
        std::ofstream((folder / name).std()) << name;
    }
    std::filesystem::create_directory((folder / "folder.ttm").std());
    EXPECT_THAT(getFiles(folder.path(), "ttm"),
                testing::ElementsAre(folder / "a.TTM", folder / "a.b.ttm", folder / "b.ttm"));
}

TEST(FileList, AFolderThatCannotBeReadIsNamed) {
    const tests::TemporaryFolder folder;
    EXPECT_THAT(tests::messageOf([&] { getFiles(folder / "missing", "ttm"); }),
                testing::HasSubstr((folder / "missing").native().toUtf8()));
}

}  // namespace
}  // namespace tavrin
