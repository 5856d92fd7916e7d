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

/// How much of a busy processor the calling thread gets beside others: 0 is what threads begin
/// with, lower numbers give less. What has been lowered may not be raised again.
void setThreadPriority(int priority);

}  // namespace platform
}  // namespace foundation
}  // namespace tavrin
