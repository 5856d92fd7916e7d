#pragma once

#include "foundation/data/PropertyDefinition.h"
#include "gui/sheet/editors/EditorContext.h"
#include "gui/sheet/editors/PropertyEditor.h"

#include <memory>

namespace tavrin::sheet {

/// The editor for the values of this property as its limit and attributes ask for it; null when
/// there is none for its type. The definition must outlive the editor.
std::unique_ptr<PropertyEditor> makeEditor(const PropertyDefinition& property,
                                           const EditorContext& context);

}  // namespace tavrin::sheet
