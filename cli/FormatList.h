#pragma once

#include <iosfwd>

namespace tavrin::cli {

/// The picture formats that can be written, with their extensions, what they carry and the choices
/// that --format-option takes.
void printFormats(std::ostream& out);

}  // namespace tavrin::cli
