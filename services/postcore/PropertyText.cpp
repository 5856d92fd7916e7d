#include "services/postcore/PropertyText.h"

#include "foundation/NumberText.h"
#include "foundation/Optional.h"
#include "services/postcore/QuotedText.h"

#include <array>
#include <string_view>

namespace tavrin::postcore {
namespace {

template <class T>
constexpr bool kIsVector = false;
template <class T>
constexpr bool kIsVector<std::vector<T>> = true;

/// Calls visit with a default value of the C++ type that holds values of `type`.
template <class Visitor>
auto visitType(PropertyType type, const Visitor& visit) {
    switch (type) {
        case PropertyType::Int:
            return visit(int{});
        case PropertyType::Float:
            return visit(float{});
        case PropertyType::Bool:
            return visit(bool{});
        case PropertyType::Vec3:
            return visit(Vec3{});
        case PropertyType::String:
            return visit(String{});
        case PropertyType::Vec3Array:
            return visit(std::vector<Vec3>{});
        case PropertyType::FloatArray:
            return visit(std::vector<float>{});
        case PropertyType::Vec2Array:
            return visit(std::vector<Vec2>{});
        case PropertyType::IntArray:
            return visit(std::vector<int>{});
        case PropertyType::BoolArray:
            return visit(std::vector<bool>{});
        case PropertyType::StringArray:
            return visit(std::vector<String>{});
        case PropertyType::Undefined:
            break;
    }
    return visit(std::monostate{});
}

// Values without their own separators. `between` separates the components of a vector.

String write(int value, const char*) {
    return Str::getNumberText(value);
}

String write(float value, const char*) {
    return Str::getNumberText(value);
}

String write(bool value, const char*) {
    return value ? "1" : "0";
}

String write(const Vec2& value, const char* between) {
    return write(value.x, between) + between + write(value.y, between);
}

String write(const Vec3& value, const char* between) {
    return write(value.x, between) + between + write(value.y, between) + between +
           write(value.z, between);
}

String write(const String& value, const char*) {
    return getQuotedText(value);
}

template <class T>
String writeArray(const std::vector<T>& values, const char* separator, const char* between) {
    String text;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const T& value = values[i];
        text += (i == 0 ? String() : String(separator)) + write(value, between);
    }
    return text;
}

std::u16string_view trim(std::u16string_view text) {
    while (!text.empty() && isWhiteSpace(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isWhiteSpace(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

/// The parts between separators, trimmed; at least one, and no separator stands at the end.
template <class IsSeparator>
std::vector<std::u16string_view> split(std::u16string_view text, const IsSeparator& isSeparator) {
    std::vector<std::u16string_view> parts;
    std::size_t start = 0;
    for (std::size_t i = 0; i <= text.size(); ++i) {
        if (i == text.size() || isSeparator(text[i])) {
            parts.push_back(trim(text.substr(start, i - start)));
            start = i + 1;
        }
    }
    return parts;
}

std::vector<std::u16string_view> splitAtCommas(std::u16string_view text) {
    return split(text, [](char16_t unit) { return unit == u','; });
}

std::vector<std::u16string_view> splitAtWhiteSpace(std::u16string_view text) {
    auto parts = split(text, isWhiteSpace);
    std::erase(parts, std::u16string_view());
    return parts;
}

bool read(std::u16string_view text, int& value) {
    const auto number = Str::parseInt(text);
    value = number.value_or(0);
    return number.has_value();
}

bool read(std::u16string_view text, float& value) {
    const auto number = Str::parseFloat(text);
    value = number.value_or(0.0f);
    return number.has_value();
}

bool read(std::u16string_view text, bool& value) {
    value = text == u"true" || text == u"1";
    return value || text == u"false" || text == u"0";
}

bool read(std::u16string_view text, Vec2& value) {
    const auto parts = splitAtWhiteSpace(text);
    return parts.size() == 2 && read(parts[0], value.x) && read(parts[1], value.y);
}

bool read(std::u16string_view text, Vec3& value) {
    const auto parts = splitAtWhiteSpace(text);
    return parts.size() == 3 && read(parts[0], value.x) && read(parts[1], value.y) &&
           read(parts[2], value.z);
}

bool read(std::u16string_view text, String& value) {
    const auto quoted = takeQuotedText(text);
    value = quoted.value_or(String());
    return quoted && text.empty();
}

bool read(std::u16string_view, std::monostate) {
    return false;
}

bool read(std::u16string_view text, std::vector<String>& values) {
    while (!text.empty()) {
        const auto value = takeQuotedText(text);
        text = trim(text);
        if (!value || (!text.empty() && text.front() != u',')) {
            return false;
        }
        values.push_back(*value);
        if (!text.empty()) {
            text = trim(text.substr(1));
            if (text.empty()) {
                return false;
            }
        }
    }
    return true;
}

template <class T>
bool read(std::u16string_view text, std::vector<T>& values) {
    if (text.empty()) {
        return true;
    }
    for (const std::u16string_view part : splitAtCommas(text)) {
        T value{};
        if (!read(part, value)) {
            return false;
        }
        values.push_back(value);
    }
    return true;
}

// Arrays in headers: every component is one number between commas.

template <class T>
bool readComponents(std::u16string_view text, std::vector<T>& values) {
    return read(text, values);
}

bool readComponents(std::u16string_view text, std::vector<bool>& values) {
    std::vector<float> numbers;
    const bool isRead = read(text, numbers);
    for (const float number : numbers) {
        values.push_back(number != 0.0f);
    }
    return isRead;
}

bool readComponents(std::u16string_view text, std::vector<Vec2>& values) {
    std::vector<float> numbers;
    const bool isRead = read(text, numbers) && numbers.size() % 2 == 0;
    for (std::size_t i = 0; isRead && i < numbers.size(); i += 2) {
        values.push_back({numbers[i], numbers[i + 1]});
    }
    return isRead;
}

bool readComponents(std::u16string_view text, std::vector<Vec3>& values) {
    std::vector<float> numbers;
    const bool isRead = read(text, numbers) && numbers.size() % 3 == 0;
    for (std::size_t i = 0; isRead && i < numbers.size(); i += 3) {
        values.push_back({numbers[i], numbers[i + 1], numbers[i + 2]});
    }
    return isRead;
}

Failure makeFailure(PropertyType type, const String& text) {
    constexpr std::size_t kMostShown = 40;
    const bool isLong = text.size() > kMostShown;
    return Failure("\"" + text.substring(0, kMostShown) + (isLong ? u"\u2026" : u"") +
                   "\" is not a value of the type " + toString(type) + ".");
}

}  // namespace

String getConfSerialization(const Property& property) {
    return property.visit([]<class T>(const T& value) -> String {
        if constexpr (std::is_same_v<T, std::monostate>) {
            return {};
        } else if constexpr (std::is_same_v<T, bool>) {
            return value ? "true" : "false";
        } else if constexpr (kIsVector<T>) {
            return writeArray(value, ", ", " ");
        } else {
            return write(value, " ");
        }
    });
}

Result<Property> parseConfSerialization(PropertyType type, const String& text) {
    return visitType(type, [&](auto value) -> Result<Property> {
        if (!read(trim(text.view()), value)) {
            return makeFailure(type, text);
        }
        if constexpr (std::is_same_v<decltype(value), std::monostate>) {
            return Property();
        } else {
            return Property(std::move(value));
        }
    });
}

String getAttributeText(const Property& property) {
    return property.visit([&property]<class T>(const T& value) -> String {
        if constexpr (kIsVector<T> && !std::is_same_v<T, std::vector<String>>) {
            return writeArray(value, ",", ",");
        } else {
            return getConfSerialization(property);
        }
    });
}

Result<Property> parseAttributeText(PropertyType type, const String& text) {
    return visitType(type, [&]<class T>(T value) -> Result<Property> {
        if constexpr (kIsVector<T> && !std::is_same_v<T, std::vector<String>>) {
            if (!readComponents(trim(text.view()), value)) {
                return makeFailure(type, text);
            }
            return Property(std::move(value));
        } else {
            return parseConfSerialization(type, text);
        }
    });
}

}  // namespace tavrin::postcore
