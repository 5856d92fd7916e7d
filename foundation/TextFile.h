#pragma once

#include "foundation/Path.h"
#include "foundation/Result.h"

#include <cstdint>

namespace tavrin {
inline namespace foundation {

/// The whole text of a file, decoded from UTF-8: each malformed sequence becomes one U+FFFD, a byte
/// order mark at the beginning is left out. Fails with a sentence that names the file when it
/// cannot be read or is longer than `largestSize` bytes, which is the most that memory is taken
/// for.
Result<String> readTextFile(const Path& path, std::uint64_t largestSize);

}  // namespace foundation
}  // namespace tavrin
