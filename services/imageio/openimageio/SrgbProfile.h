#pragma once

#include <string>

namespace tavrin::imageio {

/// An ICC profile (version 4, matrix and tone curve) that says "sRGB", for formats that have no
/// other word for it.
std::string makeSrgbProfile();

}  // namespace tavrin::imageio
