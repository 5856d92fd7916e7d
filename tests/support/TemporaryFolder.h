#pragma once

#include "foundation/Path.h"

#include <filesystem>
#include <random>
#include <string>

namespace tavrin::tests {

/// A new empty folder for the files of one test, removed with all of them at the end.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::random_device random;
        do {
            path_ = std::filesystem::temp_directory_path() /
                    ("tavrin-test-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(path_));
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    Path path() const { return path_; }
    Path operator/(const std::filesystem::path& name) const { return path_ / name; }

private:
    std::filesystem::path path_;
};

}  // namespace tavrin::tests
