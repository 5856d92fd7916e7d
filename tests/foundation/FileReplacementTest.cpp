#include "foundation/FileReplacement.h"
#include "foundation/TextFile.h"
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
    static String read(const Path& path) { return readTextFile(path, 1000).value(); }
    static void replace(const Path& target) {
        FileReplacement replacement(target);
        write(replacement.getPath(), "new");
        replacement.commit();
    }
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
    write(replacement.getPath(), "new");
    EXPECT_FALSE(fs::exists((folder_ / "new.exr").std()));
    replacement.commit();
    EXPECT_THAT(names(), ElementsAre("new.exr"));
    EXPECT_EQ(read(folder_ / "new.exr"), "new");
}

TEST_F(FileReplacementTest, LinkToAMissingFileMakesThatFile) {
    fs::create_symlink("real.exr", (folder_ / "link.exr").std());
    replace(folder_ / "link.exr");
    EXPECT_TRUE(fs::is_symlink((folder_ / "link.exr").std()));
    EXPECT_THAT(names(), ElementsAre("link.exr", "real.exr"));
}

TEST_F(FileReplacementTest, WithoutCommitNothingChanges) {
    write(folder_ / "old.exr", "old");
    write(FileReplacement(folder_ / "old.exr").getPath(), "new");
    EXPECT_THAT(names(), ElementsAre("old.exr"));
    EXPECT_EQ(read(folder_ / "old.exr"), "old");
}

TEST_F(FileReplacementTest, FailedCommitLeavesNothingBehind) {
    const auto commitToFolder = [this] {
        FileReplacement replacement(folder_ / "target");
        fs::create_directory((folder_ / "target").std());
        replacement.commit();
    };
    EXPECT_THAT(messageOf(commitToFolder), HasSubstr("target\" cannot be"));
    EXPECT_THAT(names(), ElementsAre("target"));
}

TEST_F(FileReplacementTest, AccessRightsAreKeptButNotTheIdentityOfTheOwner) {
    const fs::path target = (folder_ / "old").std();
    for (const auto& [before, after] :
         {std::pair{0600u, 0600u}, {0664u, 0664u}, {0777u, 0777u}, {04755u, 0755u}}) {
        write(target, "old");
        fs::permissions(target, fs::perms(before));
        replace(target);
        EXPECT_EQ(fs::status(target).permissions(), fs::perms(after));
        EXPECT_EQ(read(target), "new");
    }
}

TEST_F(FileReplacementTest, LinkIsKeptAndItsTargetReplaced) {
    const fs::path link = (folder_ / "link.exr").std();
    fs::create_directory((folder_ / "store").std());
    write(folder_ / "store/real.exr", "old");
    fs::create_symlink("store/real.exr", link);
    replace(link);
    EXPECT_TRUE(fs::is_symlink(link));
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
