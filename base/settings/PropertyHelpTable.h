#pragma once

#include <span>

namespace tavrin::settings {

/// What a property belongs to; the user interface has one panel for each.
enum class PropertyGroup { Denoise, LightMix, BloomGlare, Camera, SharpenBlur };

/// The help on one property, with placeholders for what its descriptor says: %TYPE, %NAME,
/// %DEFAULT, %MIN, %MAX.
struct PropertyHelpRow {
    int id;
    PropertyGroup group;
    const char* text;  ///< empty: there is no help
};

/// One row for each property that belongs to a group.
std::span<const PropertyHelpRow> getPropertyHelpTable();

}  // namespace tavrin::settings
