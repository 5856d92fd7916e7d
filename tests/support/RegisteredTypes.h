#pragma once

#include "foundation/data/TypeDatabase.h"

namespace tavrin::tests {

/// The types of data objects are registered as long as this lives.
class RegisteredTypes {
public:
    RegisteredTypes() { TypeDatabase::registerCallersTypes(); }
    RegisteredTypes(const RegisteredTypes&) = delete;
    RegisteredTypes& operator=(const RegisteredTypes&) = delete;
    ~RegisteredTypes() { TypeDatabase::unregisterCallersTypes(); }
};

}  // namespace tavrin::tests
