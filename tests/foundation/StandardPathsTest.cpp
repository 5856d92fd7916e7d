#include "foundation/StandardPaths.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace tavrin {
namespace {

TEST(StandardPaths, FilesOfTheProgramAreBesideItsFolder) {
    // The build puts the resources where an installed program has them.
    EXPECT_TRUE(std::filesystem::is_directory(StandardPaths::toneMappingPresetsBundle().std()));
    EXPECT_EQ(StandardPaths::lutsBundle().parent(),
              StandardPaths::toneMappingPresetsBundle().parent());
}

TEST(StandardPaths, TheWorkspaceIsAFolder) {
    const tests::TemporaryFolder folder;
    const auto workspaceOf = [](const Path& value) {
        setenv("TAVRIN_DEVELOPMENT", value.std().c_str(), 1);
        return StandardPaths::quorvelWorkspaceDir();
    };
    EXPECT_EQ(workspaceOf(folder.path()), folder.path());
    EXPECT_EQ(workspaceOf(folder / "missing"), std::nullopt);
    EXPECT_EQ(workspaceOf(Path()), std::nullopt);
}

}  // namespace
}  // namespace tavrin
