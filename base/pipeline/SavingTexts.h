#pragma once

#include "base/image/ElementInfo.h"
#include "foundation/Path.h"
#include "foundation/Result.h"

namespace tavrin::pipeline {

// What the operators that save tell their owners.

inline const String kSavingTitle = "Saving progress";

/// The message of a save that has succeeded.
String makeSuccessMessage(const Path& path);
/// The text of a save that does not get an element's pixels.
String makeRetrieveFailure(const image::ElementInfo& element);

/// Throws the message of a save that has failed as an Exception.
void throwOnFailure(const Result<void>& result);

}  // namespace tavrin::pipeline
