#include "gui/components/ColorMappingModel.h"

#include "services/colorkit/editing/PipelineData.h"

#include <utility>

namespace tavrin::components {

using Data = colorkit::ColorMappingWithObservers::Data;

namespace {

GenericList convert(const colorkit::ColorMapping& colorMapping) {
    return colorkit::convertPipelineToDataObjects(colorMapping.getPipeline(),
                                                  colorkit::HiddenItems::Include);
}

}  // namespace

ColorMappingModel::ColorMappingModel(colorkit::ColorMapping& colorMapping,
                                     const PassToMainThread& passToMainThread)
    : colorMapping_(colorMapping),
      entity_(std::make_shared<colorkit::ColorMappingWithObservers>()) {
    takeSharedPipeline();
    takeSharedSwitch();
    keep(entity_->addObserver(Data::kToneMapping, [this] { storePipeline(); }));
    keep(entity_->addObserver(Data::kEnabled, [this] { storeSwitch(); }));
    keep(colorMapping_.addPipelineObserver(passToMainThread([this] { takeSharedPipeline(); })));
    keep(colorMapping_.addEnabledObserver(passToMainThread([this] { takeSharedSwitch(); })));
}

void ColorMappingModel::takeSharedPipeline() {
    GenericList shared = convert(colorMapping_);
    if (!colorkit::areOperatorsDataSame(entity_->getData().get<GenericList>(Data::kToneMapping),
                                        shared)) {
        entity_->set(Data::kToneMapping, std::move(shared));
    }
}

void ColorMappingModel::takeSharedSwitch() {
    entity_->set(Data::kEnabled, colorMapping_.isEnabled());
}

void ColorMappingModel::storePipeline() {
    const auto& list = entity_->getData().get<GenericList>(Data::kToneMapping);
    if (colorkit::areOperatorsDataSame(list, convert(colorMapping_))) {
        return;
    }
    try {
        colorMapping_.setPipeline(colorkit::createPipeline(list));
    } catch (...) {
        // A list that no pipeline can be made of is not kept.
        takeSharedPipeline();
        throw;
    }
}

void ColorMappingModel::storeSwitch() {
    const bool isEnabled = entity_->getData().get<bool>(Data::kEnabled);
    if (isEnabled != colorMapping_.isEnabled()) {
        colorMapping_.setEnabled(isEnabled);
    }
}

}  // namespace tavrin::components
