#include "foundation/FileRegistry.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

namespace tavrin {
namespace {

const String kSoftware = "HKEY_CURRENT_USER/SOFTWARE";
const String kKey = kSoftware + "/Company";

class FileRegistryTest : public testing::Test {
protected:
    void write(const char* text) const { std::ofstream(file_.std()) << text; }

    const tests::TemporaryFolder folder_;
    const Path file_ = folder_ / "registry.json";
};

TEST_F(FileRegistryTest, KeepsTextsUnderKeys) {
    const Path file = folder_ / "a/b/registry.json";
    FileRegistry registry(file);
    EXPECT_TRUE(registry.keyExists(kSoftware));
    EXPECT_FALSE(registry.keyExists(kKey));
    EXPECT_FALSE(registry.setString(kKey, "name", "value"));
    EXPECT_TRUE(registry.createKey(kKey));
    EXPECT_TRUE(registry.setString(kKey, "name", u"\"C:\\caf\u00E9\"\n"));
    EXPECT_TRUE(registry.createKey(kKey));
    EXPECT_TRUE(registry.setString(kSoftware, "name", "other"));
    const FileRegistry again(file);
    EXPECT_TRUE(again.keyExists(kKey));
    EXPECT_EQ(again.getString(kKey, "name"), u"\"C:\\caf\u00E9\"\n");
    EXPECT_EQ(again.getString(kSoftware, "name"), "other");
    EXPECT_EQ(again.getString(kKey, "none"), std::nullopt);
    EXPECT_EQ(again.getString("none", "name"), std::nullopt);
}

TEST_F(FileRegistryTest, DamagedFileCountsAsEmpty) {
    for (const char* text : {"", "{", "[1]", "{\"HKEY_CURRENT_USER/SOFTWARE/Company\": 1}",
                             "{\"HKEY_CURRENT_USER/SOFTWARE/Company\": {\"name\": [1]}}", "\xFF"}) {
        write(text);
        FileRegistry registry(file_);
        EXPECT_EQ(registry.getString(kKey, "name"), std::nullopt) << text;
        EXPECT_TRUE(registry.createKey(kKey)) << text;
        EXPECT_TRUE(registry.setString(kKey, "name", "value")) << text;
        EXPECT_EQ(registry.getString(kKey, "name"), "value") << text;
    }
}

TEST_F(FileRegistryTest, FailuresAreAnswers) {
    write("not a folder");
    FileRegistry registry(file_ / "registry.json");
    EXPECT_FALSE(registry.createKey(kKey));
    EXPECT_FALSE(registry.keyExists(kKey));
}

TEST_F(FileRegistryTest, NoWriteIsLost) {
    constexpr int kThreads = 4;
    constexpr int kWrites = 20;
    FileRegistry(file_).createKey(kKey);
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([this, i] {
            // As another process would: only the file is shared.
            FileRegistry registry(file_);
            for (int j = 0; j < kWrites; ++j) {
                const String name = String::fromUtf8(std::to_string(i * kWrites + j));
                EXPECT_TRUE(registry.setString(kKey, name, name));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (int i = 0; i < kThreads * kWrites; ++i) {
        const String name = String::fromUtf8(std::to_string(i));
        EXPECT_EQ(FileRegistry(file_).getString(kKey, name), name);
    }
}

TEST_F(FileRegistryTest, OfTheUserIsInTheConfigurationFolder) {
    const char* const variable = "XDG_CONFIG_HOME";
    const char* const before = std::getenv(variable);
    const std::string kept = before != nullptr ? before : "";
    setenv(variable, folder_.path().std().c_str(), 1);
    EXPECT_TRUE(FileRegistry::ofUser().createKey(kKey));
    EXPECT_TRUE(FileRegistry(folder_ / "tavrin/registry.json").keyExists(kKey));
    // A relative path does not count.
    setenv(variable, "relative", 1);
    const char* const home = std::getenv("HOME");
    const std::string homeBefore = home != nullptr ? home : "";
    setenv("HOME", folder_.path().std().c_str(), 1);
    EXPECT_TRUE(FileRegistry::ofUser().createKey(kKey));
    EXPECT_TRUE(FileRegistry(folder_ / ".config/tavrin/registry.json").keyExists(kKey));
    setenv("HOME", homeBefore.c_str(), 1);
    setenv(variable, kept.c_str(), 1);
}

}  // namespace
}  // namespace tavrin
