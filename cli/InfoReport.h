#pragma once

#include "base/image/ExrInfo.h"
#include "foundation/Json.h"
#include "foundation/Path.h"

#include <iosfwd>

namespace tavrin::cli {

/// What a file holds, for programs; docs/command-line.md describes the members.
Json makeInfoReport(const Path& path, const image::ExrInfo& info);

/// Lays a report out for people.
void printInfoReport(std::ostream& out, const Json& report);

}  // namespace tavrin::cli
