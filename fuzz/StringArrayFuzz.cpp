// The exported string array: any text is read or refused, and what was read survives being written.

#include "foundation/StringArray.h"

#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tavrin;
    const auto text = String::fromUtf8(std::string_view(reinterpret_cast<const char*>(data), size));
    const auto items = Str::parseExportStringArray(text);
    if (!items) {
        return 0;
    }
    const auto again = Str::parseExportStringArray(Str::getExportStringArray(*items));
    if (!again || *again != *items) {
        std::abort();
    }
    return 0;
}
