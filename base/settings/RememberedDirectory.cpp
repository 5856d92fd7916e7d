#include "base/settings/RememberedDirectory.h"

namespace tavrin::settings {
namespace {

const String kCompanyKey = "HKEY_CURRENT_USER/SOFTWARE/TavrinRenderer";
const String kProgramKey = kCompanyKey + "/ImageEditor";
const String kLastDirectory = "LastDirectory";

bool makeSureOfKey(IRegistry& registry, const String& key) {
    return registry.keyExists(key) || registry.createKey(key);
}

}  // namespace

Path getStartDirectory(const IRegistry& registry) {
    return Path(registry.getString(kProgramKey, kLastDirectory).value_or(".")) / "";
}

void rememberDirectory(IRegistry& registry, const Path& file) {
    std::error_code error;
    // The parent of a bare file name is the directory that the process is in.
    const Path absolute = std::filesystem::absolute(file.std(), error);
    if (error || !registry.keyExists("HKEY_CURRENT_USER/SOFTWARE") ||
        !makeSureOfKey(registry, kCompanyKey) || !makeSureOfKey(registry, kProgramKey)) {
        return;
    }
    registry.setString(kProgramKey, kLastDirectory, absolute.parent().native());
}

}  // namespace tavrin::settings
