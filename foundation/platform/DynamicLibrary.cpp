#include "foundation/platform/DynamicLibrary.h"

#include "foundation/Exception.h"

#include <dlfcn.h>

namespace tavrin {
inline namespace foundation {
namespace platform {

DynamicLibrary::DynamicLibrary(const Path& path)
    : path_(path), handle_(dlopen(path.std().c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (handle_ == nullptr) {
        throw Exception("Module \"" + path_.native() +
                        "\" cannot be loaded: " + String::fromUtf8(dlerror()) + ".");
    }
}

void* DynamicLibrary::getSymbol(const char* name) const {
    void* address = dlsym(handle_, name);
    if (address == nullptr) {
        throw Exception("Module \"" + path_.native() + "\" has no function \"" +
                        String::fromUtf8(name) + "\".");
    }
    return address;
}

Path getProgramFolder() {
    return Path(std::filesystem::read_symlink("/proc/self/exe")).parent();
}

}  // namespace platform
}  // namespace foundation
}  // namespace tavrin
