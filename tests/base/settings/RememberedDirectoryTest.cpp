#include "base/settings/RememberedDirectory.h"
#include "foundation/FileRegistry.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <map>

namespace tavrin::settings {
namespace {

const String kKey = "HKEY_CURRENT_USER/SOFTWARE/TavrinRenderer/ImageEditor";

TEST(RememberedDirectory, IsWhereTheNextDialogStarts) {
    const tests::TemporaryFolder folder;
    FileRegistry registry(folder / "config/registry.json");
    EXPECT_EQ(getStartDirectory(registry).native(), "./");
    rememberDirectory(registry, folder / "render.txr");
    EXPECT_EQ(getStartDirectory(registry).native(), folder.path().native() + "/");
    EXPECT_EQ(registry.getString(kKey, "LastDirectory"), folder.path().native());
    rememberDirectory(registry, Path(String("bare.txr")));
    EXPECT_EQ(registry.getString(kKey, "LastDirectory"),
              Path(std::filesystem::current_path()).native());
}

/// Refuses to create one key.
class RefusingRegistry final : public IRegistry {
public:
    explicit RefusingRegistry(String refused) : refused_(std::move(refused)) {}

    bool keyExists(const String& key) const override {
        return key != refused_ && keys_.count(key) != 0;
    }
    bool createKey(const String& key) override {
        keys_.insert({key, {}});
        return key != refused_;
    }
    Optional<String> getString(const String&, const String&) const override { return {}; }
    bool setString(const String&, const String&, const String&) override {
        hasValue_ = true;
        return true;
    }
    bool hasValue() const { return hasValue_; }

private:
    String refused_;
    std::map<String, String> keys_{{"HKEY_CURRENT_USER/SOFTWARE", {}}};
    bool hasValue_ = false;
};

TEST(RememberedDirectory, FailuresAreSilent) {
    const String file = "/folder/file.txr";
    for (const char* refused :
         {"HKEY_CURRENT_USER/SOFTWARE", "HKEY_CURRENT_USER/SOFTWARE/TavrinRenderer",
          "HKEY_CURRENT_USER/SOFTWARE/TavrinRenderer/ImageEditor"}) {
        RefusingRegistry registry(refused);
        rememberDirectory(registry, Path(file));
        EXPECT_FALSE(registry.hasValue()) << refused;
    }
    RefusingRegistry registry("none");
    rememberDirectory(registry, Path(file));
    EXPECT_TRUE(registry.hasValue());
}

}  // namespace
}  // namespace tavrin::settings
