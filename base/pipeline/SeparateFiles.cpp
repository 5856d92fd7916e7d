#include "base/pipeline/SeparateFiles.h"

#include "foundation/Text.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <string>

namespace tavrin::pipeline {
namespace {

using image::ElementInfo;

/// `count` above 1 tells elements apart whose names become the same file name.
Path getElementPath(const Path& path, const ElementInfo& element, int count) {
    if (element.name == image::kBeautyElement) {
        return path;
    }
    const String start = path.stem() + "_";
    const String end =
        (count > 1 ? "_" + String::fromUtf8(std::to_string(count)) : "") + "." + path.extension();
    const std::size_t taken = (start + end).toUtf8().size();
    const std::size_t room = Str::kLongestFilename - std::min(taken, Str::kLongestFilename);
    const String name = Str::escapeFilename(image::getDisplayName(element.name), room);
    return path.withFileName(start + name + end);
}

}  // namespace

std::vector<ElementInfo> getSavableElements(const IOperator& op,
                                            const Function<bool(const ElementInfo&)>& filter) {
    std::vector<ElementInfo> elements = op.getElements();
    std::erase_if(elements, [&filter](const ElementInfo& element) {
        return !image::isSavableSeparately(element) || !filter(element);
    });
    return elements;
}

std::vector<Path> getSeparatePaths(const std::vector<ElementInfo>& elements, const Path& path) {
    if (elements.size() == 1) {
        return {path};
    }
    std::vector<Path> paths;
    std::set<std::filesystem::path> taken;
    for (const ElementInfo& element : elements) {
        Path own = getElementPath(path, element, 1);
        for (int count = 2; !taken.insert(own.std()).second; ++count) {
            own = getElementPath(path, element, count);
        }
        paths.push_back(std::move(own));
    }
    return paths;
}

}  // namespace tavrin::pipeline
