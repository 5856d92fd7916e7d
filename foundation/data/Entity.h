#pragma once

#include "foundation/CallbackLifetime.h"
#include "foundation/Function.h"
#include "foundation/ObserverList.h"
#include "foundation/String.h"
#include "foundation/data/GenericObject.h"

#include <map>
#include <utility>

namespace tavrin {
inline namespace foundation {

/// Base of things that are shared and shown by their data: whoever changes a property of the data
/// does it here, and the observers of that property are told. One thread at a time. Functions that
/// take the name of a property throw an Exception when there is none of that name.
class Entity {
public:
    explicit Entity(GenericObject data) : data_(std::move(data)) {}
    Entity(const Entity&) = delete;
    Entity& operator=(const Entity&) = delete;
    virtual ~Entity() = default;

    const GenericObject& getData() const { return data_; }

    /// As in GenericObject. Observers are called after a change; setting the value that is there
    /// already is none.
    template <class T>
    void set(const String& name, T value) {
        setValue(name, Value(std::move(value)));
    }
    void setValue(const String& name, Value value);

    /// Changes a value where it is, by `change(T&)`; however much that does, it is one change. When
    /// it throws, the value stays as it was.
    template <class T, class Change>
    void modify(const String& name, const Change& change) {
        T value = data_.get<T>(name);
        change(value);
        set(name, std::move(value));
    }

    /// Called after every change of the property. The observer may change other properties, but not
    /// this one.
    [[nodiscard]] CallbackLifetime addObserver(const String& name, Function<void()> callback);

private:
    GenericObject data_;
    std::map<String, ObserverList<>> observers_;
};

}  // namespace foundation
}  // namespace tavrin
