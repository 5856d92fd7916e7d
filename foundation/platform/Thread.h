#pragma once

#include "foundation/String.h"

namespace tavrin {
inline namespace foundation {
namespace platform {

/// Names the calling thread, for debuggers and crash reports. Where the system keeps only a short
/// name it gets the end of this one, which tells our threads apart.
void setThreadName(const String& name);
/// The name that the calling thread has been given; empty without one.
const String& getThreadName();

}  // namespace platform
}  // namespace foundation
}  // namespace tavrin
