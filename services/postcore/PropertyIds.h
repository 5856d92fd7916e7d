#pragma once

namespace tavrin::postcore {

// Ids of properties that code reads by itself. PropertyTable.cpp says what each of them is.
inline constexpr int kCameraIsoId = 341;
inline constexpr int kCameraShutterSpeedId = 342;
inline constexpr int kCameraFStopId = 343;
inline constexpr int kBloomIntensityId = 353;
inline constexpr int kGlareIntensityId = 354;
inline constexpr int kBloomGlareThresholdId = 360;
inline constexpr int kLightMixColorId = 362;
inline constexpr int kLightMixIntensityId = 363;
inline constexpr int kBloomGlareEnabledId = 368;
inline constexpr int kSharpenAmountId = 379;
inline constexpr int kSharpenRadiusId = 380;
inline constexpr int kLightMixEnabledId = 381;
inline constexpr int kBlurRadiusId = 382;
inline constexpr int kSharpenBlurEnabledId = 383;
inline constexpr int kBloomGlareSizeId = 387;
inline constexpr int kBloomGlareLegacyId = 400;
inline constexpr int kDenoiseBlendingId = 989;
inline constexpr int kDenoiseFireflySensitivityId = 992;
inline constexpr int kDenoiseAmountId = 993;
inline constexpr int kDenoiseModeId = 996;
inline constexpr int kDenoiseSensitivityId = 997;
inline constexpr int kDenoiseBackendId = 999;

}  // namespace tavrin::postcore
