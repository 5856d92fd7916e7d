#pragma once

#include "foundation/Function.h"
#include "foundation/String.h"
#include "foundation/data/GenericObject.h"

#include <map>
#include <utility>
#include <vector>

namespace tavrin {
inline namespace foundation {

/// The attributes by which declarations tell a user interface how to show them, with the types of
/// their values.
namespace UiAttributes {

/// String, of types and properties: the name shown; without it the declared name serves.
inline constexpr const char* kName = "Orvix.Ui.Name";
/// String, of types and properties.
inline constexpr const char* kDescription = "Orvix.Ui.Description";
/// int, of properties; 1: a number is shown with a slider.
inline constexpr const char* kFlags = "Orvix.Ui.Flags";
/// UiPathFlags, of properties that hold a Path.
inline constexpr const char* kPathFlags = "Orvix.Ui.PathFlags";
/// UiChoices, of properties that hold the int index of one of several choices.
inline constexpr const char* kChoices = "Orvix.Ui.Choices";
/// UiPredicate, of properties: when they can be edited.
inline constexpr const char* kEnabledIf = "Orvix.Ui.EnabledIf";
/// UiListItemAdder, of properties that hold a GenericList.
inline constexpr const char* kListItemAdder = "Orvix.Ui.ListItemAdder";
/// UiListPresets, of properties that hold a GenericList.
inline constexpr const char* kListPresets = "Orvix.Ui.ListPresets";
/// UiListDefaultValue, of properties that hold a GenericList.
inline constexpr const char* kListDefaultValue = "Orvix.Ui.ListDefaultValue";

}  // namespace UiAttributes

/// Two codes for the control that shows a path.
using UiPathFlags = std::pair<int, int>;
/// The texts shown for the choices, by index.
using UiChoices = std::vector<String>;
/// Asked with the object that has the property.
using UiPredicate = Function<bool(const GenericObject&)>;
/// Changes a list in place.
using UiListAction = Function<void(GenericList&)>;
/// Makes the list to which a user resets the property.
using UiListDefaultValue = Function<GenericList()>;

/// What a user may add to a list.
struct UiListItemAdder {
    struct AddMenuItem {
        String label;
        UiListAction action;  ///< empty for a heading
        String description;
        bool isHeading = false;
    };

    Function<std::vector<AddMenuItem>()> createMenuContent;
};

/// By what a user may replace a list, by name.
struct UiListPresets {
    Function<std::map<String, UiListAction>()> createMenuContent;
};

}  // namespace foundation
}  // namespace tavrin
