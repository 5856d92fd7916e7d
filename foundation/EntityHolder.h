#pragma once

#include "foundation/SharedPtr.h"

#include <utility>

namespace tavrin {
inline namespace foundation {

/// A shared owner of an entity, or empty: the value type of properties that refer to entities.
/// Holders are equal when they hold the same entity. As safe across threads as a shared pointer.
template <class T>
class EntityHolder {
public:
    EntityHolder() = default;
    template <class U>
    EntityHolder(SharedPtr<U> entity) : entity_(std::move(entity)) {}

    bool isEmpty() const { return !entity_; }
    T* get() const { return entity_.get(); }
    T& operator*() const { return *entity_; }
    T* operator->() const { return entity_.get(); }

    friend bool operator==(const EntityHolder&, const EntityHolder&) = default;

private:
    SharedPtr<T> entity_;
};

}  // namespace foundation
}  // namespace tavrin
