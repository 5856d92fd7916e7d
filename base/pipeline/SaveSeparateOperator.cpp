#include "base/pipeline/SaveSeparateOperator.h"

#include "base/image/ImageIterators.h"
#include "base/pipeline/SavingTexts.h"
#include "base/pipeline/SeparateFiles.h"
#include "services/imageio/SaveImage.h"

#include <utility>

namespace tavrin::pipeline {

using image::ElementInfo;
using image::ElementKind;

SaveSeparateOperator::SaveSeparateOperator()
    : saver_([](const Path& path, const imageio::IImageIterator& picture, bool isData,
                Optional<imageio::ImageFormat> format, const imageio::ImageSaveSettings& settings) {
          return imageio::saveImage(path, picture, isData, format, settings, TaskProgress());
      }) {}

void SaveSeparateOperator::save(std::vector<ElementInfo> elements, const Path& path,
                                imageio::ImageFormat format,
                                const imageio::ImageSaveSettings& settings) {
    {
        const std::lock_guard lock(mutex_);
        requested_ = {std::move(elements), path, format, settings};
    }
    run("Pipeline_SaveSeparateOperator");
}

std::vector<ElementInfo> SaveSeparateOperator::getSavableElements(
    const Function<bool(const ElementInfo&)>& filter) const {
    return pipeline::getSavableElements(input(), filter);
}

void SaveSeparateOperator::update() {
    Job job;
    {
        const std::lock_guard lock(mutex_);
        job = requested_;
    }
    computeWithProgress(kSavingTitle, [&] {
        if (job.path.fileName().isEmpty() || job.path.extension().isEmpty()) {
            throw Exception("Well-formed output image path having a file extension is expected.");
        }
        if (job.elements.empty()) {
            throw Exception(
                "There are not selected any render elements that can be saved. You need to select "
                "at least one.");
        }
        saveElements(job);
        return makeSuccessMessage(job.path);
    });
}

void SaveSeparateOperator::saveElements(const Job& job) const {
    const std::vector<Path> paths = getSeparatePaths(job.elements, job.path);
    for (std::size_t i = 0; i < paths.size(); ++i) {
        tellProgress(static_cast<float>(i) / static_cast<float>(paths.size()));
        saveElement(job.elements[i], paths[i], job);
    }
}

void SaveSeparateOperator::saveElement(const ElementInfo& element, const Path& path,
                                       const Job& job) const {
    const Pixel size = getDataWindow().size();
    const auto picture = pullRgb({element.name, {0, 0, size.x, size.y}, 1.0f, Control::Wait});
    if (!picture) {
        throw Exception(makeRetrieveFailure(element));
    }
    const auto write = [&](const imageio::IImageIterator& pixels) {
        throwOnFailure(
            saver_(path, pixels, element.has(image::kNoColorMapping), job.format, job.settings));
    };
    if (element.kind == ElementKind::Rgba) {
        write(image::RgbaImageIterator<0, Rgb>(*picture));
    } else {
        write(image::RgbImageIterator<0>(*picture));
    }
}

}  // namespace tavrin::pipeline
