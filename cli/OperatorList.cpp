#include "cli/OperatorList.h"

#include "services/colorkit/ColorMappingOperatorFactory.h"
#include "services/colorkit/ParameterJson.h"

#include <ostream>
#include <string>
#include <utility>

namespace tavrin::cli {
namespace {

using colorkit::ColorMappingOperatorDescriptor;
using colorkit::OperatorCategory;
using colorkit::ParameterDeclaration;

constexpr std::pair<OperatorCategory, const char*> kHeadings[] = {
    {OperatorCategory::Basic, "Basic"},
    {OperatorCategory::CurveControl, "Curve Control"},
    {OperatorCategory::HighlightControl, "Highlight Control"},
    {OperatorCategory::FinalLook, "Final Look"},
    {OperatorCategory::NotOffered, "Only in files"},
};

void printParameter(std::ostream& out, const ParameterDeclaration& parameter) {
    const Json value = colorkit::toJson(parameter, colorkit::getDefaultValue(parameter));
    out << "    " << parameter.name << ": " << value.dump() << "; "
        << colorkit::describeRequirement(parameter).toUtf8() << '\n';
    if (parameter.description != nullptr) {
        out << "        " << parameter.description << '\n';
    }
}

void printOperator(std::ostream& out, const ColorMappingOperatorDescriptor& descriptor) {
    // A description may have further paragraphs for the window.
    const std::string description = descriptor.description;
    out << "  " << descriptor.typeName << " (" << descriptor.displayName
        << "): " << description.substr(0, description.find('\n')) << '\n';
    for (const ParameterDeclaration* parameter : descriptor.parameters) {
        printParameter(out, *parameter);
    }
}

}  // namespace

void printOperators(std::ostream& out) {
    const auto& descriptors =
        colorkit::ColorMappingOperatorFactory::getInstance().getAllDescriptors();
    for (const auto& [category, heading] : kHeadings) {
        out << heading << '\n';
        for (const auto& [name, descriptor] : descriptors) {
            if (descriptor->category == category) {
                printOperator(out, *descriptor);
            }
        }
    }
}

}  // namespace tavrin::cli
