// Texts of settings files: whatever is taken fits its property and survives being written.

#include "base/settings/Settings.h"
#include "foundation/FatalError.h"
#include "services/postcore/PropertyDescriptor.h"
#include "services/postcore/SettingsText.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tavrin::postcore {
namespace {

void require(bool condition, const char* reason) {
    if (!condition) {
        fatalError(reason);
    }
}

bool acceptAll(int) {
    return true;
}

void checkText(const settings::Settings& settings) {
    SettingsWriter writer;
    writer.addProperties(settings, acceptAll);
    settings::Settings again;
    const auto takeOther = [](const String&, const String&) { return std::nullopt; };
    const auto warn = [](const String&) { fatalError("A line that was written is refused."); };
    require(readSettingsText(writer.getText(), {again, acceptAll, takeOther, warn}).has_value(),
            "A text that was written is refused.");
    for (const PropertyDescriptor& descriptor : PropertyDescriptor::list()) {
        require(again.get(descriptor.id) == settings.get(descriptor.id),
                "A value that was written is read as another one.");
    }
}

}  // namespace
}  // namespace tavrin::postcore

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tavrin;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    settings::Settings settings;
    const auto takeOther = [](const String&, const String&) -> Optional<Result<void>> {
        return Result<void>();
    };
    const postcore::SettingsReader reader{settings, postcore::acceptAll, takeOther, {}};
    if (postcore::readSettingsText(String::fromUtf8(bytes), reader)) {
        settings.validateAll();
        postcore::checkText(settings);
    }
    return 0;
}
