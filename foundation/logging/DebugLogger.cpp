#include "foundation/logging/DebugLogger.h"

#include "foundation/platform/Environment.h"

#include <spdlog/sinks/stdout_sinks.h>
#include <spdlog/spdlog.h>

namespace tavrin {
inline namespace foundation {
namespace {

spdlog::logger& getLogger() {
    static const std::shared_ptr<spdlog::logger> logger = [] {
        auto made = std::make_shared<spdlog::logger>(
            "tavrin", std::make_shared<spdlog::sinks::stderr_sink_mt>());
        made->set_level(spdlog::level::debug);
        made->set_pattern("%H:%M:%S.%e [%l] %v");
        return made;
    }();
    return *logger;
}

}  // namespace

bool isDevelopmentEnviro() {
    static const bool isSet = platform::getEnvironmentPath("TAVRIN_DEVELOPMENT").has_value();
    return isSet;
}

void DebugLogger::debug(const String& message, const Record& record) const {
    std::string text = message.toUtf8();
    for (const auto& [name, value] : record) {
        text += " " + name.toUtf8() + "=" + value.toUtf8();
    }
    getLogger().debug("{}: {}", source_, text);
}

}  // namespace foundation
}  // namespace tavrin
