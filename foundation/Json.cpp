#include "foundation/Json.h"

#include <array>
#include <charconv>

namespace tavrin {
inline namespace foundation {
namespace {

// Printing is recursive, so that depth must be bounded before a value is kept.
constexpr int kMaximumDepth = 64;

}  // namespace

Result<Json> parseJson(const String& text) {
    bool tooDeep = false;
    const auto limitDepth = [&tooDeep](int depth, Json::parse_event_t event, Json&) {
        const bool opens =
            event == Json::parse_event_t::object_start || event == Json::parse_event_t::array_start;
        tooDeep = tooDeep || (opens && depth >= kMaximumDepth);
        return !tooDeep;
    };
    try {
        Json json = Json::parse(text.toUtf8(), limitDepth);
        if (tooDeep) {
            return Failure("The text is nested too deeply.");
        }
        return json;
    } catch (const Json::parse_error& error) {
        return Failure("The text is not valid JSON at byte " +
                       String::fromUtf8(std::to_string(error.byte)) + ".");
    } catch (const Json::exception&) {
        return Failure("The text holds a number that is out of range.");
    }
}

String dumpJson(const Json& json) {
    return String::fromUtf8(json.dump(-1, ' ', false, Json::error_handler_t::replace));
}

Json toJson(const String& text) {
    return text.toUtf8();
}

Json toJson(float number) {
    std::array<char, 32> text{};
    const char* end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
    double shortest = number;
    std::from_chars(text.data(), end, shortest);
    // Rounding twice can, rarely, miss the float.
    return static_cast<float>(shortest) == number ? shortest : double{number};
}

String toString(const Json& json) {
    return String::fromUtf8(json.get_ref<const std::string&>());
}

}  // namespace foundation
}  // namespace tavrin
