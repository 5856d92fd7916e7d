#pragma once

#include "foundation/Color.h"

#include <cstdint>
#include <span>

namespace tavrin::widgets {

/// Display-encoded colours as pixels of the display, 0x00RRGGBB, rounded as by toByte(); `out` has
/// as many. Any thread.
void toDisplayPixels(std::span<const Rgb> colors, std::uint32_t* out);

}  // namespace tavrin::widgets
