#pragma once

#include "foundation/SharedPtr.h"
#include "foundation/String.h"
#include "foundation/data/TypeDefinition.h"

#include <vector>

namespace tavrin {
inline namespace foundation {

using TypeList = std::vector<SharedPtr<const TypeDefinition>>;

/// The types of data objects by name. Sources announce their declarations during static
/// initialisation, each by a constant TypeDeclaration; the types exist from the first registration
/// until it is taken back, and objects of theirs longer. All functions may be called from any
/// thread.
class TypeDatabase {
public:
    /// Makes the announced types. Every call needs one of unregisterCallersTypes; only the first
    /// makes types. Throws an Exception when two types have the same name.
    static void registerCallersTypes();
    static void unregisterCallersTypes();

    /// Null when there is no type of that name now.
    static SharedPtr<const TypeDefinition> find(const String& name);
};

/// Announces types: one constant in the source that uses them, as the linker leaves out sources of
/// a library that nobody refers to. `declare` makes the types, bases before what derives from
/// them; it is called when they are registered and must not use the database.
class TypeDeclaration {
public:
    explicit TypeDeclaration(TypeList (*declare)());
};

}  // namespace foundation
}  // namespace tavrin
