#pragma once

#include "base/pipeline/DependentMixin.h"
#include "base/pipeline/IOperator.h"
#include "base/pipeline/SettingsMixin.h"

namespace tavrin::pipeline {

/// Sharpens and blurs colours by the settings. Elements with image::kNoSharpenBlur pass as they
/// are. A region comes out the same whether it is asked for whole or in tiles, at scales that are
/// whole numbers; at other scales seams may show.
class SharpenBlurOperator final : public DependentMixin<1, SettingsMixin<IOperator>> {
private:
    Optional<BitmapImpl<Rgb>> computeRgbRegion(const Request& request) override;
};

}  // namespace tavrin::pipeline
