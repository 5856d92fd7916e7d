#pragma once

#include "foundation/Optional.h"
#include "foundation/String.h"

namespace tavrin {
inline namespace foundation {

/// Small texts that the program keeps for its user between runs, as named values under keys. Keys
/// are paths such as "HKEY_CURRENT_USER/SOFTWARE/Company"; "HKEY_CURRENT_USER/SOFTWARE" exists
/// always. What is kept is a comfort, so nothing here throws.
class IRegistry {
public:
    virtual ~IRegistry() = default;

    virtual bool keyExists(const String& key) const = 0;
    /// False when it cannot be created.
    virtual bool createKey(const String& key) = 0;
    /// Nothing when the key or the value is missing.
    virtual Optional<String> getString(const String& key, const String& name) const = 0;
    /// False when the key does not exist or the value cannot be kept.
    virtual bool setString(const String& key, const String& name, const String& value) = 0;
};

}  // namespace foundation
}  // namespace tavrin
