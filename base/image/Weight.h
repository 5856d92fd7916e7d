#pragma once

#include "foundation/String.h"

#include <variant>

namespace tavrin::image {

/// How much the pixels of an image count when it is merged with others: the same for all of them,
/// or for each what the image's float channel of that name holds.
using Weight = std::variant<float, String>;

}  // namespace tavrin::image
