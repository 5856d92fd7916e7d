#pragma once

#include "base/image/ChannelImage.h"
#include "base/image/Weight.h"
#include "base/pipeline/AsyncMixin.h"
#include "base/pipeline/IImageInfoProvider.h"
#include "base/pipeline/IOperator.h"
#include "base/pipeline/ImageLoading.h"
#include "base/pipeline/ProgressMixin.h"
#include "base/pipeline/SettingsMixin.h"
#include "foundation/Path.h"
#include "foundation/SharedPtr.h"

#include <mutex>
#include <vector>

namespace tavrin::pipeline {

/// The head of every chain: reads an image, or merges several of the same frame, and applies the
/// settings and the tone mapping that come with it. The image before stays until the new one takes
/// its place at once, and also when loading fails. Both the settings and the colour mapping are
/// set. Any thread may call everything.
class LoadOperator final : public SettingsMixin<AsyncMixin<ProgressMixin<IOperator>>>,
                           public IImageInfoProvider {
public:
    /// Loads OpenEXR files.
    LoadOperator();
    ~LoadOperator() override;

    /// Replaces what reads files; before the first load. Called from one thread at a time.
    void setLoader(Loader loader) { loader_ = std::move(loader); }

    /// Asks for loading one file, or merging several by their weights; see normalizeWeights().
    void load(std::vector<image::Weight> weights, std::vector<Path> paths);

    /// Applies the settings with these ids that come with the image, and its tone mapping: what it
    /// does not bring returns to the default. Tells problems to onWarning, and so will the colour
    /// mapping from then on. Not from an observer of the settings.
    void updateSettings(const std::vector<int>& ids);

    /// Sets a flag in the elements with these names and clears it in all others, which makes
    /// everything stale that has been computed from the image.
    void setElementsFlag(image::ElementFlag flag, const std::vector<String>& names);

    std::vector<Path> getLoadedPaths() const;
    /// One for each image that was merged; empty after loading a single file.
    std::vector<image::Weight> getLoadedWeights() const;
    /// Where to save the image: beside the file that was loaded. Empty after a merge.
    String getSuggestedSavePath() const;

    std::int64_t getRevision() const override;
    std::vector<image::ElementInfo> getElements() const override;
    Bucket getDisplayWindow() const override;
    Bucket getDataWindow() const override;

    Optional<postcore::RenderElementInfo> getElementInfo(const String& element) const override;
    postcore::CameraData getCameraData() const override;
    SharedPtr<const image::ChannelImage> getImage() const override;

private:
    /// What was asked for.
    struct Job {
        std::vector<image::Weight> weights;
        std::vector<Path> paths;
    };
    /// An image with what is derived from it.
    struct Loaded {
        SharedPtr<const image::ChannelImage> image;
        std::vector<image::ElementInfo> elements;
        std::vector<postcore::RenderElementInfo> elementInfos;
        Job job;
        String suggestedSavePath;
        std::int64_t revision = kNoRevision;
    };

    Optional<BitmapImpl<Rgb>> computeRgbRegion(const Request& request) override;
    Optional<BitmapImpl<float>> computeMonoRegion(const Request& request) override;
    void update() override;
    Loaded perform(Job job) const;
    void install(Loaded loaded);

    Loader loader_;
    std::mutex settingsMutex_;  ///< makes updates of the settings run one after the other
    std::mutex requestMutex_;
    Job requested_;  ///< guarded by requestMutex_
    mutable std::mutex resultMutex_;
    Loaded loaded_;  ///< guarded by resultMutex_
};

}  // namespace tavrin::pipeline
