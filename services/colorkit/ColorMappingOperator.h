#pragma once

#include "foundation/EntityHolder.h"
#include "services/colorkit/IColorMappingOperator.h"
#include "services/colorkit/MappingEnvironment.h"
#include "services/colorkit/StagedMapping.h"

#include <cstdint>

namespace tavrin::colorkit {

/// The variants of a mapping; 0 maps pictures for the display.
template <int kVariant>
class ColorMappingOperator;

/// A pipeline made ready to map pixels: a snapshot that no change of the ColorMapping reaches.
/// Linear Rec. 709 colours go in, colours in the display's encoding come out.
template <>
class ColorMappingOperator<0> : public StagedMapping {
public:
    /// An empty pipeline only encodes, and so does any pipeline with `isEnabled` false, when the
    /// exposures of the context do not count either.
    ColorMappingOperator(const EntityHolder<IColorMappingOperator>& pipeline, bool isEnabled,
                         const MappingEnvironment& environment);
};

/// A pipeline made ready for measuring what enters one of its operators: colours are mapped like
/// those of a picture up to the operator whose id is `stage`, which takes no part itself, and are
/// not encoded for the display. Operators that are switched off, and with `isEnabled` false all of
/// them together with the exposures of the context, pass on what they get. Without an operator of
/// that id, ids being positive, colours become black.
class HistogramColorMappingOperator : public StagedMapping {
public:
    HistogramColorMappingOperator(const EntityHolder<IColorMappingOperator>& pipeline,
                                  bool isEnabled, const MappingEnvironment& environment,
                                  std::uint32_t stage);
};

/// Only the exposure of a pipeline, that of the context included; everything else passes. With
/// `isEnabled` false all does.
class ExposureMapping : public StagedMapping {
public:
    ExposureMapping(const EntityHolder<IColorMappingOperator>& pipeline, bool isEnabled,
                    const MappingEnvironment& environment);
};

}  // namespace tavrin::colorkit
