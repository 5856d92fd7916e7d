#pragma once

#include "base/pipeline/DependentMixin.h"
#include "base/pipeline/IOperator.h"
#include "base/pipeline/SettingsMixin.h"

#include <atomic>
#include <cstdint>

namespace tavrin::pipeline {

/// Maps colours for the display. Elements with image::kNoColorMapping pass as they are, and so does
/// alpha. Requests for measuring are mapped up to one operator of the tone mapping only. Both the
/// settings and the colour mapping are set.
class ColorMapOperator final : public DependentMixin<1, SettingsMixin<IOperator>> {
public:
    static constexpr std::uint32_t kNoStage = 0xFFFFFFFF;

    /// The id of the operator of the tone mapping whose input is measured. Without one the measured
    /// colours are black.
    void setHistogramStage(std::uint32_t stage) { histogramStage_ = stage; }

    /// Lets the camera of the settings take part in the colour mapping.
    void updateColorMappingContext();

private:
    Optional<BitmapImpl<Rgb>> computeRgbRegion(const Request& request) override;

    std::atomic<std::uint32_t> histogramStage_ = kNoStage;
};

}  // namespace tavrin::pipeline
