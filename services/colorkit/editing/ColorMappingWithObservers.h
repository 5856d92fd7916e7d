#pragma once

#include "foundation/Function.h"
#include "foundation/data/Entity.h"

namespace tavrin::colorkit {

/// The model of the tone-mapping sheet: a switch and a list of operators, which a panel keeps in
/// step with a ColorMapping. Its type must be registered. One thread at a time.
class ColorMappingWithObservers : public Entity {
public:
    /// The type of its data and the properties: a bool, a String and a GenericList.
    struct Data {
        static constexpr const char* kTypeName = "ColorMappingWithObservers";
        static constexpr const char* kEnabled = "enabled";
        /// Where the settings come from; a text with " (Time override)" locks the other two.
        static constexpr const char* kSettingsSource = "settingsSource";
        static constexpr const char* kToneMapping = "toneMapping";
    };

    /// On, with the default list.
    ColorMappingWithObservers();

    /// When it is not empty, it is given every operator object that is made for the list (by the
    /// default list, the add menu and the presets) before it gets there. To be set before such
    /// objects are made.
    static inline Function<void(GenericObject&)> sOverrideSetter;
};

}  // namespace tavrin::colorkit
