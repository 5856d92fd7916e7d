#include "cli/PropertyList.h"

#include "base/settings/PropertyHelp.h"
#include "services/postcore/PropertyDescriptor.h"
#include "services/postcore/PropertyText.h"

#include <iomanip>
#include <ostream>
#include <sstream>
#include <string>

namespace tavrin::cli {
namespace {

using postcore::Property;
using postcore::PropertyDescriptor;
using postcore::PropertyType;

/// The text that --set takes; null where there is no value.
Json toJsonValue(const Property& property) {
    const bool isDefined = property.getType() != PropertyType::Undefined;
    return isDefined ? toJson(postcore::getConfSerialization(property)) : Json();
}

std::string getText(const Json& value) {
    return value.is_null() ? "" : value.get<std::string>();
}

void printHelp(std::ostream& out, const std::string& help) {
    constexpr std::size_t kWidth = 100;
    const std::string indent = "    ";
    std::istringstream words(help);
    std::string line;
    for (std::string word; words >> word;) {
        if (!line.empty() && indent.size() + line.size() + 1 + word.size() > kWidth) {
            out << indent << line << '\n';
            line.clear();
        }
        line += (line.empty() ? "" : " ") + word;
    }
    if (!line.empty()) {
        out << indent << line << '\n';
    }
}

void printChoices(std::ostream& out, const Json& choices) {
    if (!choices.empty()) {
        out << "   ";
        for (const auto& [name, value] : choices.items()) {
            out << ' ' << value.get<int>() << ' ' << name;
        }
        out << '\n';
    }
}

Json makeChoices(const PropertyDescriptor& descriptor) {
    Json choices = Json::object();
    for (const postcore::PropertyChoice& choice : descriptor.choices) {
        choices[choice.name.toUtf8()] = choice.value;
    }
    return choices;
}

}  // namespace

Json makePropertyReport() {
    Json report = Json::array();
    for (const PropertyDescriptor& descriptor : PropertyDescriptor::list()) {
        report.push_back({{"id", descriptor.id},
                          {"name", toJson(descriptor.name)},
                          {"type", toJson(postcore::toString(descriptor.type))},
                          {"default", toJsonValue(descriptor.defaultValue)},
                          {"minimum", toJsonValue(descriptor.minimum)},
                          {"maximum", toJsonValue(descriptor.maximum)},
                          {"choices", makeChoices(descriptor)},
                          {"help", toJson(settings::getPropertyHelp(descriptor.id))}});
    }
    return report;
}

void printPropertyReport(std::ostream& out, const Json& report) {
    out << std::left;
    for (const Json& property : report) {
        const std::string value = getText(property["default"]);
        out << property["id"].get<int>() << "  " << std::setw(26) << getText(property["name"])
            << std::setw(12) << getText(property["type"]) << "default "
            << (value.empty() ? "empty" : value);
        if (!property["minimum"].is_null()) {
            out << ", " << getText(property["minimum"]) << " to " << getText(property["maximum"]);
        }
        out << '\n';
        printChoices(out, property["choices"]);
        printHelp(out, getText(property["help"]));
    }
}

}  // namespace tavrin::cli
