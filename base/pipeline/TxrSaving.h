#pragma once

#include "base/image/ChannelImage.h"
#include "base/pipeline/AsyncMixin.h"
#include "base/pipeline/DependentMixin.h"
#include "base/pipeline/IOperator.h"
#include "base/pipeline/ImageInfoMixin.h"
#include "base/pipeline/ProgressMixin.h"
#include "base/pipeline/SettingsMixin.h"

namespace tavrin::pipeline {

/// What the operators share that write a TXR file: the loaded elements with their pixels as they
/// came, denoised variants, what the renderer says about the elements, and the settings as they
/// are. Input 0 is the load operator, input 1 the denoise operator.
class TxrSaving
    : public DependentMixin<2,
                            SettingsMixin<ImageInfoMixin<AsyncMixin<ProgressMixin<IOperator>>>>> {
public:
    /// Writes the image, or answers a message that names the file.
    using Saver = Function<Result<void>(const image::ChannelImage&, const Path&)>;

    /// Replaces what writes files; before the first save.
    void setSaver(Saver saver) { saver_ = std::move(saver); }

protected:
    using ElementFilter = Function<bool(const image::ElementInfo&)>;
    using Renaming = Function<String(const image::ElementInfo&)>;
    /// Puts elements into the image that is written. Throws an Exception.
    using Export = Function<void(image::ChannelImage& target)>;

    TxrSaving();

    /// The whole of a save to the file, with its callbacks: the elements are what `exportElements`
    /// puts in. `check` runs before anything else and throws an Exception where the save makes no
    /// sense.
    void save(const Path& path, const Function<void()>& check, const Export& exportElements);

    /// Puts those elements of an input into the target that the filter accepts, under new names,
    /// with what the renderer says about them.
    void exportElements(int inputIndex, const ElementFilter& filter, const Renaming& rename,
                        image::ChannelImage& target) const;
    /// Puts in all elements, the denoised variants, and whatever else the loaded image holds.
    void exportWholeImage(image::ChannelImage& target) const;

    /// Lets the target be of the loaded image's camera, which bloom and glare ask for.
    void copyCamera(image::ChannelImage& target) const;

    /// For requests by others, answered by input 0.
    Optional<BitmapImpl<Rgb>> computeRgbRegion(const Request& request) override {
        return requestRgb(request);
    }

private:
    void exportPixels(int inputIndex, const image::ElementInfo& element,
                      const image::ElementInfo& exported, image::ChannelImage& target) const;

    Saver saver_;
};

}  // namespace tavrin::pipeline
