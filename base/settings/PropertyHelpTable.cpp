#include "base/settings/PropertyHelpTable.h"

namespace tavrin::settings {
namespace {

constexpr PropertyHelpRow kTable[] = {
    {996, PropertyGroup::Denoise,
     "Selects a denoising mode, i.e. the type of noise reduction filter. It can be set to either "
     "to the \"Full\" constant for full-featured denoising, or to the \"Fireflies\" constant to "
     "remove fireflies (high intensity pixels) only. The global default is the \"None\" constant "
     "which could be overridden by the input image."},
    {997, PropertyGroup::Denoise,
     "Controls the sensitivity of the denoising to details. It has nothing to do with rendering or "
     "gathering denoising data by Orvix Tavrin. In the GUI version of the editor this property is "
     "called denoising radius. The sensitivity is expected to lie between %MIN and %MAX. A larger "
     "sensitivity results in more aggressive filtering (which could result in greater blurring of "
     "details in textures, etc.). The global default is %DEFAULT which could be overridden by the "
     "input image."},
    {993, PropertyGroup::Denoise,
     "Defines an amount, between %MIN and %MAX, of blending between the original image and its "
     "denoised variant. The global default is %DEFAULT which could be overridden by the input "
     "image."},
    {989, PropertyGroup::Denoise,
     "Defines an on/off switch for blending of the denoised image. When disabled, the result is "
     "the same as with blend amount equal to zero."},
    {381, PropertyGroup::LightMix,
     "Defines an on/off switch for each light select of the LightMix. They are expected to be "
     "either 1 or 0, separated by commas. The light selects are ordered in the same way as in the "
     "GUI version of the editor. The global default is 1 for all the light selects, which could be "
     "overridden by the input image."},
    {363, PropertyGroup::LightMix,
     "Defines an intensity multiplier for each light select of the LightMix. They are expected to "
     "be separated by commas. The light selects are ordered in the same way as in the GUI version "
     "of the editor. The global default is 1 for all the light selects, which could be overridden "
     "by the input image."},
    {362, PropertyGroup::LightMix,
     "Defines a color multiplier for each light select of the LightMix. They are expected to be "
     "separated by commas. The light selects are ordered in the same way as in the GUI version of "
     "the editor. The global default is a white color (1 1 1) for all the light selects, which "
     "could be overridden by the input image."},
    {368, PropertyGroup::BloomGlare,
     "Applies both the bloom and glare effects. The global default is \"%DEFAULT\" which could be "
     "overridden by the input image."},
    {400, PropertyGroup::BloomGlare,
     "Enables legacy (v5) version of the bloom and glare effect. The global default is "
     "\"%DEFAULT\" which could be overridden by the input image."},
    {387, PropertyGroup::BloomGlare,
     "Defines the size of bloom and glare effect in percentage of render size. The global default "
     "is \"%DEFAULT\" which could be overridden by the input image."},
    {353, PropertyGroup::BloomGlare,
     "Defines the linear scaling of the bloom effect. If the intensity is equal to %MIN, the bloom "
     "effect is disabled. The intensity can go to infinity. The global default is %DEFAULT which "
     "could be overridden by the input image."},
    {354, PropertyGroup::BloomGlare,
     "Defines the linear scaling of the glare effect. If the intensity is equal to %MIN, the glare "
     "effect is disabled. The intensity can go to infinity. The global default is %DEFAULT which "
     "could be overridden by the input image."},
    {355, PropertyGroup::BloomGlare,
     "Controls the number of streaks for the glare effect. It could be from %MIN up to %MAX "
     "streaks. The global default is %DEFAULT which could be overridden by the input image."},
    {356, PropertyGroup::BloomGlare,
     "Rotates the glare effect in degrees. All real values are possible. The global default is "
     "%DEFAULT degrees which could be overridden by the input image."},
    {357, PropertyGroup::BloomGlare,
     "Controls the blurring of the glare streak perpendicular to the streak direction. The value "
     "is expected to lie between %MIN and %MAX. The global default is %DEFAULT which could be "
     "overridden by the input image."},
    {358, PropertyGroup::BloomGlare,
     "Defines the intensity of the color shifting effect. Intensity equal to %MIN completely "
     "disables the effect, while intensity equal to %MAX results in full strength of the effect. "
     "The global default is %DEFAULT which could be overridden by the input image."},
    {359, PropertyGroup::BloomGlare,
     "Alternates the colors produced by the color shifting effect (which is controlled by the "
     "color intensity property). Values from %MIN to %MAX are available. The global default is "
     "%DEFAULT which could be overridden by the input image."},
    {360, PropertyGroup::BloomGlare,
     "Only pixels brighter than this threshold are affected by the bloom and glare effects. The "
     "threshold can go from %MIN to infinity. The global default is %DEFAULT which could be "
     "overridden by the input image. Increase this value to make the effects more localized around "
     "only the brightest light sources."},
    {401, PropertyGroup::BloomGlare,
     "Enables custom aperture shape for more advanced control of the glare effect. The global "
     "default is \"%DEFAULT\" which could be overridden by the input image."},
    {402, PropertyGroup::BloomGlare,
     "When set, bladed aperture (i.e. regular polygon) is used instead of circular one. The global "
     "default is \"%DEFAULT\" which could be overridden by the input image."},
    {403, PropertyGroup::BloomGlare,
     "Number of aperture blades used for custom aperture. Value can be between %MIN and %MAX, the "
     "global default is %DEFAULT which could be overridden by the input image."},
    {404, PropertyGroup::BloomGlare,
     "Rotation of bladed aperture in degrees, with global default %DEFAULT which could be "
     "overridden by the input image."},
    {405, PropertyGroup::BloomGlare,
     "Enable peripheral grating effect on aperture mask (simulates aperture degradation). This "
     "creates \"halo\" effect around lights in render. The global default is \"%DEFAULT\" which "
     "could be overridden by the input image."},
    {406, PropertyGroup::BloomGlare,
     "Ratio of the aperture perimeter filled with grating lines. Value of %MAX causes aperture "
     "perimeter to be fully covered by grating without spaces. The global default is %DEFAULT "
     "which could be overridden by the input image."},
    {407, PropertyGroup::BloomGlare,
     "Length of the grating lines. Value of %MAX equals to lines of the length of aperture "
     "diameter, the global default is %DEFAULT which could be overridden by the input image."},
    {408, PropertyGroup::BloomGlare,
     "Zoom of the whole grating effect. Value of %MIN means no zoom, value of %MAX means %MAXx "
     "zoom. The global default is %DEFAULT which could be overridden by the input image."},
    {409, PropertyGroup::BloomGlare,
     "Controls the direction of grate lines in degrees in range from %MIN to %MAX. The global "
     "default is %DEFAULT which could be overridden by the input image."},
    {410, PropertyGroup::BloomGlare,
     "Strength of the peripheral grating effect with %MIN disabling the effect and %MAX being the "
     "full effect strength. The global default is %DEFAULT which could be overridden by the input "
     "image."},
    {411, PropertyGroup::BloomGlare,
     "Enables occlusion of part of aperture shape. The global default is \"%DEFAULT\" which could "
     "be overridden by the input image."},
    {412, PropertyGroup::BloomGlare,
     "When enabled, occlusion is applied symmetrically from both sides of the aperture. The global "
     "default is \"%DEFAULT\" which could be overridden by the input image."},
    {413, PropertyGroup::BloomGlare,
     "Controls ratio of aperture being occluded, with value of %MIN meaning no occlusion and %MAX "
     "meaning full occlusion. The global default is %DEFAULT which could be overridden by the "
     "input image."},
    {414, PropertyGroup::BloomGlare,
     "Rotation of the occlusion in degrees. The global default is %DEFAULT which could be "
     "overridden by the input image."},
    {415, PropertyGroup::BloomGlare,
     "The arc of occlusion with %MIN being straight line and %MAX being full arc. The global "
     "default is %DEFAULT which could be overridden by the input image."},
    {416, PropertyGroup::BloomGlare,
     "Simulates scratches over lens. Regular scratches can create additional glare effects, while "
     "irregular ones will affect shape and blur of existing glare effect. The global default is "
     "\"%DEFAULT\" which could be overridden by the input image."},
    {417, PropertyGroup::BloomGlare,
     "The pattern of scratches. The global default is %DEFAULT which could be overridden by the "
     "input image."},
    {418, PropertyGroup::BloomGlare,
     "When enabled, streaks are stemming from one point with equal angles. The global default is "
     "\"%DEFAULT\" which could be overridden by the input image."},
    {419, PropertyGroup::BloomGlare,
     "Number of streaks that are clustered together in Random pattern. This can create additional "
     "glare streaks. Value can range from %MIN to %MAX, the global default is %DEFAULT which could "
     "be overridden by the input image."},
    {420, PropertyGroup::BloomGlare,
     "Density of the scratches with %MIN meaning no scratches and %MAX having scratches fully "
     "cover whole aperture. The global default is %DEFAULT which could be overridden bythe input "
     "image."},
    {421, PropertyGroup::BloomGlare,
     "Length of the scratches. Value can be in range from %MIN to %MAX. The global default is "
     "%DEFAULT which could be overridden by the input image."},
    {422, PropertyGroup::BloomGlare,
     "Changes randomization of the scratches. The global default is %DEFAULT which could be "
     "overridden by the input image."},
    {423, PropertyGroup::BloomGlare,
     "Randomizes the direction of the scratches, with value of %MIN meaning no variance in "
     "scratches slope and value of %MAX fully random slope of scratches. The global default is "
     "%DEFAULT which could be overridden by the input image."},
    {424, PropertyGroup::BloomGlare,
     "Randomizes the width of the scratches, with value of %MIN meaning no variance in scratches "
     "width and value of %MAX fully random width of scratches. The global default is %DEFAULT "
     "which could be overridden by the input image."},
    {425, PropertyGroup::BloomGlare,
     "Zoom of the whole pattern of scratches. Value of %MIN means no zoom, value of %MAX means "
     "%MAXx zoom. The global default is %DEFAULT which could be overridden by the input image."},
    {426, PropertyGroup::BloomGlare,
     "Rotation of the pattern of scratches in degrees. The global default is %DEFAULT which could "
     "be overridden by the input image."},
    {427, PropertyGroup::BloomGlare,
     "Strength of the scratches effect with %MIN disabling the effect and %MAX being the full "
     "effect strength. The global default is %DEFAULT which could be overridden by the input "
     "image."},
    {428, PropertyGroup::BloomGlare,
     "Simulates dust particles over lens. Dust can create effect similar to bloom that is affected "
     "by overall pattern of generated particles. The global default is \"%DEFAULT\" which could be "
     "overridden by the input image."},
    {429, PropertyGroup::BloomGlare,
     "The pattern of dust particles. The global default is %DEFAULT which could be overridden by "
     "the input image."},
    {430, PropertyGroup::BloomGlare,
     "Density of dust particles with %MIN meaning no particles and %MAX having particles fully "
     "cover whole aperture. The global default is %DEFAULT which could be overridden bythe input "
     "image."},
    {431, PropertyGroup::BloomGlare,
     "Randomizes the radii of dust particles. Value of %MIN means all particles will have the same "
     "radius, value of %MAX fully randomizes radii. The global default is %DEFAULT which could be "
     "overridden by the input image."},
    {432, PropertyGroup::BloomGlare,
     "Randomizes the positions of the dust particles. Value of %MIN means regular placement of "
     "particles based on dust pattern, value of %MAX means random placement. The global default is "
     "%DEFAULT which could be overridden by the input image."},
    {433, PropertyGroup::BloomGlare,
     "Zoom of the whole dust pattern. Value of %MIN means no zoom, value of %MAX means %MAXx zoom. "
     "The global default is %DEFAULT which could be overridden by the input image."},
    {434, PropertyGroup::BloomGlare,
     "Rotation of the pattern of generated dust particles in degrees. The global default is "
     "%DEFAULT which could be overridden by the input image."},
    {435, PropertyGroup::BloomGlare,
     "Strength of the dust effect with %MIN disabling the effect and %MAX being the full effect "
     "strength. The global default is %DEFAULT which could be overridden by the input image."},
    {341, PropertyGroup::Camera,
     "Controls camera ISO speed. This is used to calculate exposure when the photographic exposure "
     "is turned on. The ISO is expected to lie between %MIN and %MAX. The global default is "
     "%DEFAULT which could be overridden by the input image."},
    {343, PropertyGroup::Camera, ""},
    {342, PropertyGroup::Camera, ""},
    {383, PropertyGroup::SharpenBlur,
     "Enables both sharpening and blurring the image. The global default is \"%DEFAULT\" which "
     "could be overridden by the input image."},
    {379, PropertyGroup::SharpenBlur,
     "Defines the strength of the sharpening. The amount is expected to lie between %MIN and %MAX. "
     "If it is greater than %MIN the image is sharpened. The global default is %DEFAULT which "
     "could be overridden by the input image."},
    {380, PropertyGroup::SharpenBlur,
     "Controls a pixel radius used for sharpening. It corresponds to the size of the "
     "high-frequency detector. The radius could be from %MIN to %MAX. The global default is "
     "%DEFAULT which could be overridden by the input image."},
    {382, PropertyGroup::SharpenBlur,
     "Controls a pixel radius used for blurring. It corresponds to the size of the blurring "
     "window. The radius could be from %MIN to %MAX. The global default is %DEFAULT which could be "
     "overridden by the input image."},
};

}  // namespace

std::span<const PropertyHelpRow> getPropertyHelpTable() {
    return kTable;
}

}  // namespace tavrin::settings
