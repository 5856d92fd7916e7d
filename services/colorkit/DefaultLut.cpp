#include "services/colorkit/DefaultLut.h"

#include "foundation/StandardPaths.h"

#include <filesystem>

namespace tavrin::colorkit {
Path getDefaultLut() {
    return StandardPaths::lutsBundle() / "Film Print.cube";
}

Path findLut(const Path& path) {
    std::error_code error;
    if (path.std().is_absolute() || std::filesystem::exists(path.std(), error)) {
        return path;
    }
    const Path own = StandardPaths::lutsBundle().std() / path.std();
    return std::filesystem::exists(own.std(), error) ? own : path;
}

}  // namespace tavrin::colorkit
