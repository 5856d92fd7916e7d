#pragma once

#include "foundation/data/TypeDefinition.h"

#include <QString>

namespace tavrin::sheet {

/// What users call a property or a type. A declared name that serves for lack of another begins
/// with a capital letter.
QString getDisplayName(const PropertyDefinition& property);
QString getDisplayName(const TypeDefinition& type);

/// Empty when there is none.
QString getDescription(const PropertyDefinition& property);
QString getDescription(const TypeDefinition& type);

}  // namespace tavrin::sheet
