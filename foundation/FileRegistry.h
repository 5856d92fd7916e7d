#pragma once

#include "foundation/Function.h"
#include "foundation/Json.h"
#include "foundation/Path.h"
#include "foundation/Registry.h"

namespace tavrin {
inline namespace foundation {

/// A registry in one file, which several processes may share: docs/file-formats.md shows it. A file
/// that is damaged counts as empty. Each call reads the file anew. Any thread.
class FileRegistry final : public IRegistry {
public:
    /// The file and its folder need not exist; writing makes them.
    explicit FileRegistry(Path file) : file_(std::move(file)) {}

    /// The registry of the user, in the folder for the configuration of programs.
    static FileRegistry ofUser();

    bool keyExists(const String& key) const override;
    bool createKey(const String& key) override;
    Optional<String> getString(const String& key, const String& name) const override;
    bool setString(const String& key, const String& name, const String& value) override;

private:
    /// Changes the file's contents while no other process can; false when `change` answers false
    /// or the file cannot be written.
    bool update(const Function<bool(Json& keys)>& change);

    Path file_;
};

}  // namespace foundation
}  // namespace tavrin
