#pragma once

#include "foundation/Path.h"
#include "foundation/String.h"

namespace tavrin {
inline namespace foundation {
namespace platform {

/// A module loaded at run time, so that what it links against costs nothing until it is needed.
/// Stays loaded until the process ends, as the libraries behind it may have started threads.
class DynamicLibrary {
public:
    /// Throws an Exception that names the module and the loader's reason.
    explicit DynamicLibrary(const Path& path);

    /// The address of an exported function; throws an Exception when there is none of that name.
    void* getSymbol(const char* name) const;

private:
    Path path_;
    void* handle_;
};

/// The running program's file.
Path getProgramFile();
/// Its folder.
Path getProgramFolder();

/// Where a module of ours is, beside the running program as it is installed or as it is built. The
/// name has no suffix.
Path findModule(const String& name);

}  // namespace platform
}  // namespace foundation
}  // namespace tavrin
