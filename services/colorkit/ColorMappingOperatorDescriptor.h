#pragma once

#include "services/colorkit/MappingEnvironment.h"
#include "services/colorkit/OperatorParameter.h"
#include "services/colorkit/StageList.h"

#include <span>

namespace tavrin::colorkit {

class OperatorValues;

/// Where the user interface offers an operator.
enum class OperatorCategory : unsigned {
    Basic = 0,
    CurveControl = 1,
    HighlightControl = 2,
    FinalLook = 3,
    NotOffered = 4,
};

/// What an operator is, apart from its values: how it is called, its parameters, and how it becomes
/// stages. There is one constant of each, in the operator's source.
struct ColorMappingOperatorDescriptor {
    const char* typeName;  ///< in pipeline texts; never changes
    const char* displayName;
    OperatorCategory category;
    const char* description;
    bool isEnabledByDefault;
    std::span<const ParameterDeclaration* const> parameters;
    /// Appends the stages that these values stand for; appends nothing when the values are neutral.
    void (*appendStages)(const OperatorValues& values, const MappingEnvironment& environment,
                         StageList& stages);
    /// Whether it does nothing but multiply light by one factor, as exposures do.
    bool isExposure = false;
};

}  // namespace tavrin::colorkit
