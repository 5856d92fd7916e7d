#pragma once

#include "foundation/EntityHolder.h"
#include "foundation/String.h"
#include "services/colorkit/IColorMappingOperator.h"

namespace tavrin::colorkit {

/// The pipeline as one line of JSON: {"version": 1, "operators": [{"type": ..., "enabled": ...,
/// one member for each parameter}, ...]}, in the order in which the operators work on a colour.
String serializePipelineToString(const EntityHolder<IColorMappingOperator>& pipeline);

/// Reads that text, from any source, into a pipeline that is the same. A parameter that the text
/// leaves out has its default, so that an operator may get new ones; one without a switch is on.
/// When the text is not one, `error` gets one sentence and the answer is empty; otherwise `error`
/// becomes empty. The text of an empty pipeline gives an empty holder without an error.
EntityHolder<IColorMappingOperator> deserializePipelineFromString(const String& text,
                                                                  String& error);

}  // namespace tavrin::colorkit
