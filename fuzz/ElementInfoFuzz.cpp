// The renderer's description of an element, and with it our JSON reader: what is read survives
// being written.

#include "services/postcore/RenderElementInfo.h"

#include "fuzz/FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tavrin;
    const String text = fuzz::toText(data, size);
    if (const Result<Json> json = parseJson(text)) {
        // Numbers are rounded when they are read, so that the texts are compared.
        const String written = dumpJson(*json);
        const Result<Json> again = parseJson(written);
        fuzz::require(again && dumpJson(*again) == written, "JSON text changes by being read.");
    }
    if (const auto info = postcore::RenderElementInfo::deserialize(text)) {
        const auto again = postcore::RenderElementInfo::deserialize(info->serializeToString());
        fuzz::require(again && *again == *info, "A description is read as another one.");
    }
    return 0;
}
