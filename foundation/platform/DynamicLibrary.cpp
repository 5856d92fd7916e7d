#include "foundation/platform/DynamicLibrary.h"

#include "foundation/Exception.h"

#include <dlfcn.h>

#include <filesystem>

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

Path getProgramFile() {
    return Path(std::filesystem::read_symlink("/proc/self/exe"));
}

Path getProgramFolder() {
    return getProgramFile().parent();
}

Path findModule(const String& name) {
    // A build tree has no folder of the installed name.
    const String fileName = name + TAVRIN_MODULE_SUFFIX;
    const Path installed = getProgramFolder() / TAVRIN_MODULE_FOLDER_INSTALLED / fileName;
    std::error_code error;
    if (std::filesystem::exists(installed.std(), error)) {
        return installed;
    }
    return getProgramFolder() / TAVRIN_MODULE_FOLDER_BUILT / fileName;
}

}  // namespace platform
}  // namespace foundation
}  // namespace tavrin
