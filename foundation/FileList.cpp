#include "foundation/FileList.h"

#include "foundation/Exception.h"
#include "foundation/Text.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace tavrin {
inline namespace foundation {

std::vector<Path> getFiles(const Path& folder, const String& extension) {
    namespace fs = std::filesystem;
    std::vector<fs::path> found;
    std::error_code error;
    for (fs::directory_iterator entry(folder.std(), error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code isNoFile;
        if (entry->is_regular_file(isNoFile) &&
            Str::toLowerCase(Path(entry->path()).extension()) == Str::toLowerCase(extension)) {
            found.push_back(entry->path());
        }
    }
    if (error) {
        throw Exception("Folder \"" + folder.native() +
                        "\" cannot be read: " + String::fromUtf8(error.message()) + ".");
    }
    std::sort(found.begin(), found.end());
    return {found.begin(), found.end()};
}

}  // namespace foundation
}  // namespace tavrin
