#include "foundation/BinaryFileInputStream.h"
#include "foundation/FileReplacement.h"
#include "tests/support/Message.h"
#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

namespace tavrin {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using tests::messageOf;
namespace fs = std::filesystem;

class FileReplacementTest : public testing::Test {
protected:
    static void write(const Path& path, const char* text) { std::ofstream(path.std()) << text; }
    static String read(const Path& path) { return readTextFile(path, 1000); }
    std::vector<std::string> names() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder_.path().std())) {
            names.push_back(entry.path().filename());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    tests::TemporaryFolder folder_;
};

TEST_F(FileReplacementTest, NewFileAppearsAtCommit) {
    FileReplacement replacement(folder_ / "new.exr");
    EXPECT_EQ(replacement.getPath().extension(), "exr");
    EXPECT_EQ(replacement.getPath().parent(), folder_.path());
    write(replacement.getPath(), "new");
    EXPECT_FALSE(fs::exists((folder_ / "new.exr").std()));
    replacement.commit();
    EXPECT_THAT(names(), ElementsAre("new.exr"));
    EXPECT_EQ(read(folder_ / "new.exr"), "new");
}

TEST_F(FileReplacementTest, WithoutCommitNothingChanges) {
    write(folder_ / "old.exr", "old");
    {
        const FileReplacement existing(folder_ / "old.exr");
        write(existing.getPath(), "new");
        const FileReplacement missing(folder_ / "missing");
        write(missing.getPath(), "new");
    }
    EXPECT_THAT(names(), ElementsAre("old.exr"));
    EXPECT_EQ(read(folder_ / "old.exr"), "old");
}

TEST_F(FileReplacementTest, FailedCommitLeavesNothingBehind) {
    {
        FileReplacement replacement(folder_ / "target");
        write(replacement.getPath(), "new");
        fs::create_directory((folder_ / "target").std());
        EXPECT_THAT(messageOf([&] { replacement.commit(); }), HasSubstr("target\" cannot be"));
    }
    EXPECT_THAT(names(), ElementsAre("target"));
}

TEST_F(FileReplacementTest, AccessRightsOfTheTargetAreKept) {
    const auto rights = [&] { return fs::status((folder_ / "old").std()).permissions(); };
    write(folder_ / "old", "old");
    for (const unsigned mode : {0600u, 0664u, 0777u}) {
        fs::permissions((folder_ / "old").std(), fs::perms(mode));
        FileReplacement replacement(folder_ / "old");
        write(replacement.getPath(), "new");
        replacement.commit();
        EXPECT_EQ(rights(), fs::perms(mode));
    }
    EXPECT_EQ(read(folder_ / "old"), "new");
}

TEST_F(FileReplacementTest, ReplacedFileDoesNotInheritItsOwnersIdentity) {
    write(folder_ / "old", "old");
    fs::permissions((folder_ / "old").std(), fs::perms(04755));
    FileReplacement(folder_ / "old").commit();
    EXPECT_EQ(fs::status((folder_ / "old").std()).permissions(), fs::perms(0755));
}

TEST_F(FileReplacementTest, LinkIsKeptAndItsTargetReplaced) {
    fs::create_directory((folder_ / "store").std());
    write(folder_ / "store/real.exr", "old");
    fs::create_symlink("store/real.exr", (folder_ / "link.exr").std());
    FileReplacement replacement(folder_ / "link.exr");
    write(replacement.getPath(), "new");
    replacement.commit();
    EXPECT_TRUE(fs::is_symlink((folder_ / "link.exr").std()));
    EXPECT_EQ(read(folder_ / "store/real.exr"), "new");
    EXPECT_THAT(names(), ElementsAre("link.exr", "store"));
}

TEST_F(FileReplacementTest, UnusableTargetsAreRefusedAtOnce) {
    write(folder_ / "file", "x");
    const struct {
        Path target;
        const char* reason;
    } cases[] = {
        {folder_ / "missing/new.exr", "No such file"},
        {folder_ / "file/new.exr", "Not a directory"},
        {folder_.path(), "it is a folder"},
        {folder_ / std::string(300, 'x'), "File name too long"},
    };
    for (const auto& [target, reason] : cases) {
        EXPECT_THAT(messageOf([&target = target] { FileReplacement{target}; }),
                    AllOf(HasSubstr('"' + target.native().toUtf8() + '"'), HasSubstr(reason)));
    }
    EXPECT_THAT(names(), ElementsAre("file"));
}

TEST_F(FileReplacementTest, DeviceIsWrittenToDirectly) {
    const Path device(String("/dev/null"));
    FileReplacement replacement(device);
    EXPECT_EQ(replacement.getPath(), device);
    replacement.commit();
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

}  // namespace
}  // namespace tavrin
