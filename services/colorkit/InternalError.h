#pragma once

#include "foundation/Exception.h"

namespace tavrin::colorkit {

/// A mistake of the program itself, not of what it was given.
class InternalError : public Exception {
public:
    using Exception::Exception;
};

}  // namespace tavrin::colorkit
