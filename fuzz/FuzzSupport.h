#pragma once

#include "foundation/FatalError.h"
#include "foundation/Path.h"

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace tavrin::fuzz {

/// Ends the program, which the fuzzer reports as a finding.
inline void require(bool condition, const char* reason) {
    if (!condition) {
        fatalError(reason);
    }
}

inline String toText(const std::uint8_t* data, std::size_t size) {
    return String::fromUtf8(std::string_view(reinterpret_cast<const char*>(data), size));
}

/// A file of this process in memory-backed storage where there is some.
inline Path getScratchFile(const std::string& name) {
    const std::filesystem::path shared = "/dev/shm";
    const std::filesystem::path folder =
        std::filesystem::exists(shared) ? shared : std::filesystem::temp_directory_path();
    return Path(folder / ("tavrin-fuzz-" + std::to_string(getpid()) + "-" + name));
}

inline void writeFile(const Path& path, const std::uint8_t* data, std::size_t size) {
    std::ofstream(path.std(), std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
}

}  // namespace tavrin::fuzz
