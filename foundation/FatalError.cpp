#include "foundation/FatalError.h"

#include <cstdio>
#include <cstdlib>

namespace tavrin {
inline namespace foundation {

void fatalError(const char* reason, std::source_location place) {
    std::fprintf(stderr, "%s:%u: %s: %s\n", place.file_name(), unsigned(place.line()),
                 place.function_name(), reason);
    std::abort();
}

}  // namespace foundation
}  // namespace tavrin
