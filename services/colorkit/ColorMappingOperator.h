#pragma once

#include "foundation/Bitmap.h"
#include "foundation/Color.h"
#include "foundation/EntityHolder.h"
#include "services/colorkit/IColorMappingOperator.h"
#include "services/colorkit/IMappingStage.h"
#include "services/colorkit/MappingEnvironment.h"

#include <memory>
#include <span>
#include <vector>

namespace tavrin::colorkit {

/// The variants of a mapping; 0 maps pictures for the display.
template <int kVariant>
class ColorMappingOperator;

/// A pipeline made ready to map pixels: a snapshot that no change of the ColorMapping reaches.
/// Linear Rec. 709 colours go in, colours in the display's encoding come out. Negative components
/// and those that are not a number count as 0, infinity counts as the largest float; what comes out
/// is finite and not negative. The fourth component of a pixel stays what it is. Immutable: any
/// thread may map with it.
template <>
class ColorMappingOperator<0> {
public:
    /// An empty pipeline only encodes, and so does any pipeline with `isEnabled` false, when the
    /// exposures of the context do not count either.
    ColorMappingOperator(const EntityHolder<IColorMappingOperator>& pipeline, bool isEnabled,
                         const MappingEnvironment& environment);

    /// Maps the pixels of a row, or of a part of one, in place.
    void mapRow(std::span<Rgb> row, const RowPosition& position) const;

    /// Maps a bitmap in place. Its pixel (x, y) stands for the position
    /// (origin.x + trunc(x * scale), origin.y + trunc(y * scale)) in display-window coordinates.
    /// Uses the threads of the default scheduler unless there is only one row.
    void mapBitmap(BitmapImpl<Rgb>& bitmap, Pixel origin, float scale) const;

private:
    std::vector<std::unique_ptr<const IMappingStage>> stages_;
};

}  // namespace tavrin::colorkit
