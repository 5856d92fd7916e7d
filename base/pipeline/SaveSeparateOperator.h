#pragma once

#include "base/pipeline/AsyncMixin.h"
#include "base/pipeline/DependentMixin.h"
#include "base/pipeline/IOperator.h"
#include "base/pipeline/ProgressMixin.h"
#include "services/imageio/IImageIterator.h"
#include "services/imageio/ImageFormat.h"
#include "services/imageio/ImageSaveSettings.h"

#include <mutex>
#include <vector>

namespace tavrin::pipeline {

/// Saves elements as they are shown, each as a picture of its own. Holds one of them at a time.
/// Input 0 is the zoom operator.
class SaveSeparateOperator final : public DependentMixin<1, AsyncMixin<ProgressMixin<IOperator>>> {
public:
    /// Writes a picture, or answers a message that names the file. `isData` says that the values
    /// are no colours for a display; see imageio::saveImage.
    using Saver = Function<Result<void>(const Path& path, const imageio::IImageIterator& picture,
                                        bool isData, Optional<imageio::ImageFormat> format,
                                        const imageio::ImageSaveSettings& settings)>;

    SaveSeparateOperator();
    ~SaveSeparateOperator() override { shutDown(); }

    /// Replaces what writes files; before the first save.
    void setSaver(Saver saver) { saver_ = std::move(saver); }

    /// Asks for saving these elements to the files that getSeparatePaths() tells, over what is
    /// there, and returns at once. Elements of the kind Rgba are saved with alpha. Any thread.
    void save(std::vector<image::ElementInfo> elements, const Path& path,
              imageio::ImageFormat format, const imageio::ImageSaveSettings& settings);

    /// The elements that the filter accepts of those that can be saved.
    std::vector<image::ElementInfo> getSavableElements(
        const Function<bool(const image::ElementInfo&)>& filter) const;

private:
    struct Job {
        std::vector<image::ElementInfo> elements;
        Path path;
        Optional<imageio::ImageFormat> format;
        imageio::ImageSaveSettings settings;
    };

    Optional<BitmapImpl<Rgb>> computeRgbRegion(const Request& request) override {
        return requestRgb(request);
    }
    void update() override;
    void saveElements(const Job& job) const;
    void saveElement(const image::ElementInfo& element, const Path& path, const Job& job) const;

    Saver saver_;
    std::mutex mutex_;
    Job requested_;  ///< guarded by mutex_
};

}  // namespace tavrin::pipeline
