#pragma once

#include "foundation/Json.h"

#include <iosfwd>

namespace tavrin::cli {

/// The properties that --set takes, for programs; docs/command-line.md describes the members.
Json makePropertyReport();

/// Lays that report out for people.
void printPropertyReport(std::ostream& out, const Json& report);

}  // namespace tavrin::cli
