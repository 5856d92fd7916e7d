#include "cli/InfoReport.h"

#include "foundation/Text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iomanip>
#include <ostream>
#include <string>

namespace tavrin::cli {
namespace {

using image::ElementInfo;
using image::ElementKind;
using image::ExrInfo;

const String kStatisticsPrefix = "tavrin.stats.";

struct FlagName {
    image::ElementFlag flag;
    const char* name;
};

constexpr std::array kFlagNames = {
    FlagName{image::kVirtualElement, "virtual"},
    FlagName{image::kAuxiliaryElement, "auxiliary"},
    FlagName{image::kLightSelectElement, "light select"},
    FlagName{image::kDenoisableElement, "denoisable"},
    FlagName{image::kSelectedForDenoising, "selected for denoising"},
    FlagName{image::kHasDenoisedVariant, "denoised"},
    FlagName{image::kNoColorMapping, "no color mapping"},
    FlagName{image::kNoBloom, "no bloom"},
    FlagName{image::kNoGlare, "no glare"},
    FlagName{image::kNoSharpenBlur, "no sharpen/blur"},
};

const char* getKindName(ElementKind kind) {
    switch (kind) {
        case ElementKind::Rgb:
            return "RGB";
        case ElementKind::Rgba:
            return "RGBA";
        case ElementKind::Mono:
            return "mono";
        case ElementKind::Unsupported:
            break;
    }
    return "unsupported";
}

Json toJsonValue(float value) {
    if (!std::isfinite(value)) {
        return std::isnan(value) ? "nan" : value > 0.0f ? "inf" : "-inf";
    }
    return toJson(value);
}

Json toJsonValue(const Bucket& bucket) {
    return {{"x0", bucket.x0}, {"y0", bucket.y0}, {"x1", bucket.x1}, {"y1", bucket.y1}};
}

Json toJsonValue(const Pixel& pixel) {
    return Json::array({pixel.x, pixel.y});
}

Json toJsonValue(const Rgb& color) {
    return Json::array({toJsonValue(color.r), toJsonValue(color.g), toJsonValue(color.b)});
}

Json toJsonValue(const String& text) {
    return toJson(text);
}

Json toJsonValue(double value) {
    return value;
}

Json toJsonValue(int value) {
    return value;
}

Json toJsonValue(bool value) {
    return value;
}

Json toJsonValue(const image::IAttribute& attribute) {
    Json value;
    image::visitAttribute(attribute,
                          [&value](const auto& typed) { value = toJsonValue(typed.getValue()); });
    return value;
}

Json makeElementReport(const ElementInfo& element) {
    Json flags = Json::array();
    for (const FlagName& flag : kFlagNames) {
        if (element.has(flag.flag)) {
            flags.push_back(flag.name);
        }
    }
    return {{"name", toJson(image::getDisplayName(element.name))},
            {"kind", getKindName(element.kind)},
            {"flags", flags}};
}

Json makeAttributesReport(const ExrInfo& info) {
    Json attributes = Json::array();
    for (const ExrInfo::AttributeInfo& attribute : info.attributes) {
        Json report = {{"name", toJson(attribute.name)}, {"type", toJson(attribute.typeName)}};
        const auto kept = info.image.getAttributes().find(attribute.name);
        if (kept != info.image.getAttributes().end()) {
            report["value"] = toJsonValue(*kept->second);
        }
        attributes.push_back(std::move(report));
    }
    return attributes;
}

Json makeStatisticsReport(const ExrInfo& info) {
    Json statistics = Json::object();
    for (const auto& [name, attribute] : info.image.getAttributes()) {
        if (name.startsWith(kStatisticsPrefix)) {
            statistics[name.substring(kStatisticsPrefix.size()).toUtf8()] = toJsonValue(*attribute);
        }
    }
    return statistics;
}

std::string getWindowText(const Json& window) {
    const auto get = [&window](const char* name) { return window[name].get<std::int64_t>(); };
    const auto length = [&get](const char* from, const char* to) {
        return std::to_string(get(to) - get(from));
    };
    return length("x0", "x1") + " x " + length("y0", "y1") + " at (" + std::to_string(get("x0")) +
           ", " + std::to_string(get("y0")) + ")";
}

std::string getText(const Json& value) {
    return value.get<std::string>();
}

/// A value on one line, control characters escaped, long texts cut.
std::string getShortText(const Json& value) {
    constexpr std::size_t kLongest = 160;
    const String text = Str::escapeLine(dumpJson(value));
    if (text.size() <= kLongest) {
        return text.toUtf8();
    }
    return text.substring(0, kLongest).toUtf8() + "... (" + std::to_string(text.size()) +
           " characters)";
}

/// A name from the file; control characters cannot reach the terminal.
std::string getName(const Json& value) {
    const std::string quoted = Str::escapeLine(dumpJson(value)).toUtf8();
    return quoted.substr(1, quoted.size() - 2);
}

std::string join(const Json& texts) {
    std::string joined;
    for (const Json& text : texts) {
        joined += (joined.empty() ? "" : ", ") + getText(text);
    }
    return joined;
}

void printElements(std::ostream& out, const Json& elements) {
    std::size_t widest = 0;
    for (const Json& element : elements) {
        widest = std::max(widest, getName(element["name"]).size());
    }
    out << "Elements (" << elements.size() << "):\n";
    for (const Json& element : elements) {
        const std::string flags = join(element["flags"]);
        out << "  " << std::left << std::setw(int(widest)) << getName(element["name"]) << "  "
            << std::setw(flags.empty() ? 0 : 11) << getText(element["kind"])
            << (flags.empty() ? "" : "  ") << flags << '\n';
    }
}

void printStatistics(std::ostream& out, const Json& statistics) {
    if (statistics.empty()) {
        return;
    }
    out << "Statistics:\n";
    for (const auto& [name, value] : statistics.items()) {
        out << "  " << getName(name) << ": " << getShortText(value) << '\n';
    }
}

void printAttributes(std::ostream& out, const Json& attributes) {
    out << "Attributes (" << attributes.size() << "):\n";
    for (const Json& attribute : attributes) {
        out << "  " << getName(attribute["name"]) << " (" << getName(attribute["type"]) << ")";
        if (attribute.contains("value")) {
            out << ": " << getShortText(attribute["value"]);
        }
        out << '\n';
    }
}

}  // namespace

Json makeInfoReport(const Path& path, const ExrInfo& info) {
    Json elements = Json::array();
    for (const ElementInfo& element : info.elements) {
        elements.push_back(makeElementReport(element));
    }
    Json channels = Json::array();
    for (const ExrInfo::ChannelInfo& channel : info.channels) {
        channels.push_back({{"name", toJson(channel.name)}, {"type", toJson(channel.pixelType)}});
    }
    Json report = {{"file", toJson(path.native())},
                   {"kind", info.image.isTxrImage() ? "TXR" : "OpenEXR"},
                   {"layout", info.isTiled ? "tiles" : "scan lines"},
                   {"compression", toJson(info.compression)},
                   {"fileSize", info.fileSize},
                   {"displayWindow", toJsonValue(info.image.getDisplayWindow())},
                   {"dataWindow", toJsonValue(info.image.getDataWindow())},
                   {"elements", std::move(elements)},
                   {"channels", std::move(channels)},
                   {"attributes", makeAttributesReport(info)},
                   {"statistics", makeStatisticsReport(info)}};
    report["loadFailure"] = info.loadFailure.isEmpty() ? Json(nullptr) : toJson(info.loadFailure);
    return report;
}

void printInfoReport(std::ostream& out, const Json& report) {
    out << "File: " << getName(report["file"]) << " (" << report["fileSize"] << " bytes)\n"
        << "Format: " << getText(report["kind"]) << ", " << getText(report["layout"])
        << ", compression " << getText(report["compression"]) << '\n'
        << "Display window: " << getWindowText(report["displayWindow"]) << '\n'
        << "Data window: " << getWindowText(report["dataWindow"]) << '\n';
    if (!report["loadFailure"].is_null()) {
        out << "Cannot be loaded: " << Str::escapeControls(toString(report["loadFailure"])).toUtf8()
            << '\n';
    }
    printStatistics(out, report["statistics"]);
    printElements(out, report["elements"]);
    out << "Channels (" << report["channels"].size() << "):\n";
    for (const Json& channel : report["channels"]) {
        out << "  " << getName(channel["name"]) << " (" << getText(channel["type"]) << ")\n";
    }
    printAttributes(out, report["attributes"]);
}

}  // namespace tavrin::cli
