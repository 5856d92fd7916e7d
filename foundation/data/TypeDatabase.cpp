#include "foundation/data/TypeDatabase.h"

#include "foundation/Exception.h"
#include "foundation/FatalError.h"

#include <map>
#include <mutex>
#include <utility>

namespace tavrin {
inline namespace foundation {
namespace {

using TypeMap = std::map<String, SharedPtr<const TypeDefinition>>;

struct Registry {
    std::mutex mutex;
    // Guarded by mutex.
    std::vector<TypeList (*)()> declarations;
    TypeMap types;
    int registrations = 0;
};

Registry& getRegistry() {
    static Registry registry;
    return registry;
}

TypeMap makeTypes(const std::vector<TypeList (*)()>& declarations) {
    TypeMap types;
    for (const auto declare : declarations) {
        for (const SharedPtr<const TypeDefinition>& type : declare()) {
            if (!types.emplace(type->getName(), type).second) {
                throw Exception("The type \"" + type->getName() + "\" is declared twice.");
            }
        }
    }
    return types;
}

}  // namespace

void TypeDatabase::registerCallersTypes() {
    Registry& registry = getRegistry();
    const std::lock_guard lock(registry.mutex);
    if (registry.registrations == 0) {
        registry.types = makeTypes(registry.declarations);
    }
    ++registry.registrations;
}

void TypeDatabase::unregisterCallersTypes() {
    Registry& registry = getRegistry();
    const std::lock_guard lock(registry.mutex);
    if (registry.registrations == 0) {
        fatalError("Types are unregistered that were not registered.");
    }
    if (--registry.registrations == 0) {
        registry.types.clear();
    }
}

SharedPtr<const TypeDefinition> TypeDatabase::find(const String& name) {
    Registry& registry = getRegistry();
    const std::lock_guard lock(registry.mutex);
    const auto found = registry.types.find(name);
    return found == registry.types.end() ? nullptr : found->second;
}

TypeDeclaration::TypeDeclaration(TypeList (*declare)()) {
    Registry& registry = getRegistry();
    const std::lock_guard lock(registry.mutex);
    registry.declarations.push_back(declare);
}

}  // namespace foundation
}  // namespace tavrin
