#include "foundation/Json.h"

#include "foundation/Text.h"

#include <array>
#include <charconv>
#include <set>
#include <vector>

namespace tavrin {
inline namespace foundation {
namespace {

// Printing is recursive, so that depth must be bounded before a value is kept.
constexpr int kMaximumDepth = 64;

/// Watches over parsing for what the library would let pass.
class Guard {
public:
    /// What the library asks after each step; false once something has been found.
    bool accept(int depth, Json::parse_event_t event, const Json& value) {
        using Event = Json::parse_event_t;
        const bool opens = event == Event::object_start || event == Event::array_start;
        if (!failure_.isEmpty()) {
            return false;
        }
        if (opens && depth >= kMaximumDepth) {
            failure_ = "The text is nested too deeply.";
        } else if (event == Event::object_start) {
            names_.emplace_back();
        } else if (event == Event::object_end) {
            names_.pop_back();
        } else if (event == Event::key && !names_.back().insert(toString(value)).second) {
            failure_ = "An object of the text has two members " + Str::quote(toString(value)) + ".";
        }
        return failure_.isEmpty();
    }

    const String& getFailure() const { return failure_; }

private:
    std::vector<std::set<String>> names_;  ///< of the members of each open object, outermost first
    String failure_;
};

}  // namespace

Result<Json> parseJson(const String& text) {
    Guard guard;
    const auto accept = [&guard](int depth, Json::parse_event_t event, const Json& value) {
        return guard.accept(depth, event, value);
    };
    try {
        Json json = Json::parse(text.toUtf8(), accept);
        if (!guard.getFailure().isEmpty()) {
            return Failure(guard.getFailure());
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
