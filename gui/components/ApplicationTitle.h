#pragma once

#include "foundation/String.h"

namespace tavrin::components {

/// The caption of message dialogs, and how the window's title begins.
inline const String kApplicationTitle = "Tavrin Image Editor";

}  // namespace tavrin::components
