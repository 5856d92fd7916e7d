#pragma once

#include "base/image/ChannelImage.h"
#include "base/pipeline/AsyncMixin.h"
#include "base/pipeline/DependentMixin.h"
#include "base/pipeline/IOperator.h"
#include "base/pipeline/ImageInfoMixin.h"
#include "base/pipeline/ProgressMixin.h"
#include "base/pipeline/SettingsMixin.h"
#include "foundation/SharedPtr.h"
#include "services/postcore/bloomglare/BloomGlare.h"
#include "services/postcore/bloomglare/BloomGlareRenderer.h"

#include <mutex>
#include <vector>

namespace tavrin::pipeline {

/// Computes the light that bloom and glare add to one element, whole, and answers it from what it
/// keeps until the image changes. The layer is an element of its own, too, "Bloom and Glare
/// Interactive", that of the beauty. Input 0 is the LightMix operator.
class BloomGlareOperator final
    : public DependentMixin<1,
                            SettingsMixin<ImageInfoMixin<AsyncMixin<ProgressMixin<IOperator>>>>> {
public:
    /// Replaces the pixels, row 0 being the lowest, by their layer. False when that was given up.
    using Compute = Function<bool(Flags<postcore::ImageOperatorsFlag>, BitmapImpl<CompressedRgb>&,
                                  const postcore::BloomGlareData&, const postcore::CameraData&)>;

    BloomGlareOperator();
    ~BloomGlareOperator() override { shutDown(); }

    /// Asks for the layer of the element that is shown from now on.
    void setElement(const image::ElementInfo& element);
    /// Asks for the layer anew, because settings have changed that it depends on.
    void refresh();

    /// Both before the first computation. The progress is counted by the computation itself.
    void setProgress(postcore::BloomGlareProgress progress) { progress_ = std::move(progress); }
    const postcore::BloomGlareProgress& getProgress() const { return progress_; }
    void setCompute(Compute compute) { compute_ = std::move(compute); }

    /// The elements that can have a layer, and the layer.
    std::vector<image::ElementInfo> getElements() const override;

private:
    struct Result {
        SharedPtr<const image::ChannelImage> layer;  ///< as the beauty; null when there is none
        String element;                              ///< that the layer is of
        std::int64_t revision = kNoRevision;         ///< of the image
    };

    Optional<BitmapImpl<Rgb>> computeRgbRegion(const Request& request) override;
    Optional<BitmapImpl<float>> computeMonoRegion(const Request&) override { return {}; }
    void update() override;
    Result computeNow(const String& element);
    void computeFor(const image::ElementInfo& element);
    bool isOn() const;
    postcore::BloomGlareData getData(const image::ElementInfo& element) const;
    bool computeByCore(Flags<postcore::ImageOperatorsFlag> flags, BitmapImpl<CompressedRgb>& bitmap,
                       const postcore::BloomGlareData& data, const postcore::CameraData& camera);
    Result getResult() const;
    static bool isFor(const Result& result, const String& element) {
        return result.layer && result.element == element;
    }
    void keep(const String& element, std::int64_t revision, const BitmapImpl<Rgb>& pixels);
    void clear();

    Compute compute_;
    postcore::BloomGlareProgress progress_;

    // Held while a layer is computed, on the operator's own thread or that of a request that waits.
    std::mutex computeMutex_;
    // Guarded by computeMutex_.
    postcore::BloomGlareRenderer renderer_;
    bool isAbortable_ = false;

    std::mutex requestMutex_;
    image::ElementInfo requested_;  // guarded by requestMutex_

    mutable std::mutex resultMutex_;
    Result result_;  // guarded by resultMutex_
};

}  // namespace tavrin::pipeline
