#include "foundation/FileRegistry.h"

#include "foundation/BinaryFileOutputStream.h"
#include "foundation/StandardPaths.h"
#include "foundation/TextFile.h"
#include "foundation/platform/FileLock.h"

#include <string>

namespace tavrin {
inline namespace foundation {
namespace {

constexpr std::uint64_t kLargestFile = std::uint64_t{1} << 20;
const String kAlwaysThere = "HKEY_CURRENT_USER/SOFTWARE";

/// The contents of the file: an object of keys, each an object of texts.
Json readKeys(const Path& file) {
    const Result<Json> keys = readTextFile(file, kLargestFile).and_then(parseJson);
    return keys && keys->is_object() ? *keys : Json::object();
}

bool hasKey(const Json& keys, const String& key) {
    if (key == kAlwaysThere) {
        return true;
    }
    const auto found = keys.find(key.toUtf8());
    return found != keys.end() && found->is_object();
}

void writeKeys(const Path& file, const Json& keys) {
    constexpr int kIndent = 2;
    const std::string text = keys.dump(kIndent, ' ', false, Json::error_handler_t::replace) + "\n";
    BinaryFileOutputStream stream(file);
    stream.write(text.data(), text.size());
    stream.commit();
}

}  // namespace

FileRegistry FileRegistry::ofUser() {
    return FileRegistry(StandardPaths::userConfig() / "registry.json");
}

bool FileRegistry::keyExists(const String& key) const {
    return hasKey(readKeys(file_), key);
}

bool FileRegistry::createKey(const String& key) {
    return update([&key](Json& keys) {
        if (!hasKey(keys, key)) {
            keys[key.toUtf8()] = Json::object();
        }
        return true;
    });
}

Optional<String> FileRegistry::getString(const String& key, const String& name) const {
    const Json keys = readKeys(file_);
    const auto values = keys.find(key.toUtf8());
    if (values == keys.end() || !values->is_object()) {
        return {};
    }
    const auto value = values->find(name.toUtf8());
    if (value == values->end() || !value->is_string()) {
        return {};
    }
    return toString(*value);
}

bool FileRegistry::setString(const String& key, const String& name, const String& value) {
    return update([&](Json& keys) {
        if (!hasKey(keys, key)) {
            return false;
        }
        keys[key.toUtf8()][name.toUtf8()] = toJson(value);
        return true;
    });
}

bool FileRegistry::update(const Function<bool(Json& keys)>& change) {
    try {
        std::filesystem::create_directories(file_.parent().std());
        const platform::FileLock lock(file_.withFileName(file_.fileName() + ".lock"));
        Json keys = readKeys(file_);
        if (!change(keys)) {
            return false;
        }
        writeKeys(file_, keys);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

}  // namespace foundation
}  // namespace tavrin
