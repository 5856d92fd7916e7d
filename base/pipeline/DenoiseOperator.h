#pragma once

#include "base/image/ChannelImage.h"
#include "base/pipeline/AsyncMixin.h"
#include "base/pipeline/DependentMixin.h"
#include "base/pipeline/IOperator.h"
#include "base/pipeline/ProgressMixin.h"
#include "base/pipeline/SettingsMixin.h"
#include "foundation/SharedPtr.h"
#include "services/postcore/denoise/IDenoiser.h"

#include <map>
#include <mutex>
#include <vector>

namespace tavrin::pipeline {

/// Denoises the elements that are selected for it, when asked to, and answers them from what it
/// keeps until the image or the selection changes. What has not been computed comes from the
/// denoised variants that the image itself holds. Input 0 is the load operator.
class DenoiseOperator final
    : public DependentMixin<1, SettingsMixin<AsyncMixin<ProgressMixin<IOperator>>>> {
public:
    using DenoiserFactory = Function<std::unique_ptr<postcore::IDenoiser>(
        postcore::DenoisingMode, Scheduler&, postcore::ILogger&, postcore::DenoisingData,
        postcore::OidnBackend)>;
    using ElementFilter = Function<bool(const image::ElementInfo&)>;

    DenoiseOperator() : createDenoiser_(postcore::createDenoiser) {}
    ~DenoiseOperator() override { shutDown(); }

    /// Replaces what makes denoisers; before the first run.
    void setDenoiserFactory(DenoiserFactory factory) { createDenoiser_ = std::move(factory); }

    /// Asks for denoising by the mode of the settings.
    void denoise();

    /// Of the colours that are not auxiliary and that the filter accepts, those that can be
    /// denoised, and the others.
    std::vector<image::ElementInfo> getDenoiseCapableElements(const ElementFilter& filter) const;
    std::vector<image::ElementInfo> getNotDenoiseCapableElements(const ElementFilter& filter) const;
    /// The modes for which the image has the elements they need: guided by features, fireflies,
    /// networks.
    std::vector<postcore::DenoisingMode> getAvailableDenoisingModes() const;

    /// The elements that are selected or have a denoised variant.
    std::vector<image::ElementInfo> getElements() const override;

private:
    /// What is denoised, and how.
    struct Job {
        postcore::DenoisingMode mode = postcore::DenoisingMode::None;
        std::int64_t revision = kNoRevision;  ///< of the image that all pixels are from
        std::vector<image::ElementInfo> elements;
    };

    Optional<BitmapImpl<Rgb>> computeRgbRegion(const Request& request) override;
    void update() override;
    Job makeJob() const;
    void run(const Job& job);
    postcore::DenoisingData pullData(postcore::DenoisingMode mode) const;
    void checkPassCounts(postcore::DenoisingMode mode) const;
    BitmapImpl<Rgb> pull(const String& element) const;
    void denoiseElement(const Job& job, std::size_t index, postcore::IDenoiser& denoiser);
    void keep(const Job& job, const image::ElementInfo& element, const BitmapImpl<Rgb>& pixels);
    bool isWanted(const Job& job) const;
    SharedPtr<const image::ChannelImage> find(const String& element) const;
    void clear();
    void dropStaleResult() const;

    DenoiserFactory createDenoiser_;
    mutable std::mutex resultMutex_;
    // Guarded by resultMutex_: images of one element each, by its name, and the revision of the
    // image that they have been made from.
    mutable std::map<String, SharedPtr<const image::ChannelImage>> result_;
    mutable std::int64_t resultRevision_ = kNoRevision;
};

}  // namespace tavrin::pipeline
