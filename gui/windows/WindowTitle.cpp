#include "gui/windows/WindowTitle.h"

#include "gui/components/ApplicationTitle.h"

#include <cstdlib>
#include <string>

namespace tavrin::windows {
namespace {

String describeFiles(const WindowState& state) {
    String text = (state.isModified ? String("*") : String()) + state.inputs.front().native();
    if (state.inputs.size() > 1) {
        text += " [and " + String::fromUtf8(std::to_string(state.inputs.size() - 1)) + " more]";
    }
    return text;
}

String describeSize(Pixel size) {
    return String::fromUtf8(std::to_string(size.x) + "x" + std::to_string(size.y) + "px");
}

String describeZoom(int level) {
    const std::string factor = std::to_string(1 << std::abs(level));
    return String::fromUtf8(level > 0 ? factor + ":1" : "1:" + factor);
}

}  // namespace

String composeTitle(const WindowState& state) {
    std::vector<String> parts;
    if (state.isLoading) {
        parts.push_back("loading ...");
    }
    if (state.isSaving) {
        parts.push_back("saving ...");
    }
    if (state.isLoaded && parts.empty() && !state.inputs.empty()) {
        parts.push_back(describeFiles(state));
    }
    if (state.imageSize.x >= 1 && state.imageSize.y >= 1) {
        parts.push_back(describeSize(state.imageSize));
        parts.push_back(describeZoom(state.zoomLevel));
    }
    String title = components::kApplicationTitle + " " TAVRIN_VERSION;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        title += (i == 0 ? String(" (") : String(", ")) + parts[i];
    }
    return parts.empty() ? title : title + ")";
}

}  // namespace tavrin::windows
