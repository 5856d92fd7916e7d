#pragma once

#include <iosfwd>

namespace tavrin::cli {

/// The operators that tone mappings are made of, by category: their names in preset files, what
/// they do, and their parameters with defaults and ranges.
void printOperators(std::ostream& out);

}  // namespace tavrin::cli
