#include "services/postcore/denoise/DenoisingMode.h"

namespace tavrin::postcore {

Flags<DenoisingModeFlag> getDenoisingModeFlags(DenoisingMode mode) {
    switch (mode) {
        case DenoisingMode::HighQuality:
            return {DenoisingModeFlag::Usable, DenoisingModeFlag::NeedsVariances};
        case DenoisingMode::FirefliesOnly:
        case DenoisingMode::NvidiaGpuAi:
        case DenoisingMode::IntelAi:
            return DenoisingModeFlag::Usable;
        case DenoisingMode::None:
            break;
    }
    return {};
}

std::vector<FeatureType> getDenoisingFeatures(DenoisingMode mode) {
    switch (mode) {
        case DenoisingMode::HighQuality:
            return {FeatureType::VisibleNormals, FeatureType::VisibleDiffuse, FeatureType::HairIds};
        case DenoisingMode::NvidiaGpuAi:
            return {FeatureType::VisibleDiffuse, FeatureType::OptixNormals};
        case DenoisingMode::None:
        case DenoisingMode::FirefliesOnly:
        case DenoisingMode::IntelAi:
            break;
    }
    return {};
}

std::vector<FeatureType> getOptionalDenoisingFeatures(DenoisingMode mode) {
    switch (mode) {
        case DenoisingMode::HighQuality:
            return {FeatureType::Hybrid};
        case DenoisingMode::IntelAi:
            return {FeatureType::VisibleNormals, FeatureType::VisibleDiffuse};
        case DenoisingMode::None:
        case DenoisingMode::FirefliesOnly:
        case DenoisingMode::NvidiaGpuAi:
            break;
    }
    return {};
}

int getRequiredPassCount(DenoisingMode mode) {
    // A variance needs two.
    return mode == DenoisingMode::HighQuality ? 2 : 1;
}

String getFeatureElementName(FeatureType feature) {
    switch (feature) {
        case FeatureType::VisibleNormals:
            return "VisibleNormals";
        case FeatureType::VisibleDiffuse:
            return "VisibleDiffuse";
        case FeatureType::Hybrid:
            return "Hybrid";
        case FeatureType::HairIds:
            return "HairIds";
        case FeatureType::OptixNormals:
            return "OptixNormals";
    }
    return {};
}

}  // namespace tavrin::postcore
