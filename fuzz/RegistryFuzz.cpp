// The registry's file: any contents can be asked for values, and take one.

#include "foundation/FileRegistry.h"

#include "fuzz/FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tavrin;
    static const Path path = fuzz::getScratchFile("registry.json");
    fuzz::writeFile(path, data, size);
    FileRegistry registry(path);
    const String name = "name";
    const String value = fuzz::toText(data, size);
    for (const String key : {"key", "HKEY_CURRENT_USER/SOFTWARE"}) {
        static_cast<void>(registry.getString(key, name));
        const bool isKept = registry.createKey(key) && registry.keyExists(key) &&
                            registry.setString(key, name, value);
        // The file as a whole may be too long for it.
        fuzz::require(!isKept || size > 100'000 || registry.getString(key, name) == value,
                      "A value is not kept.");
    }
    return 0;
}
