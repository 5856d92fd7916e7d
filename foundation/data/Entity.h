#pragma once

#include "foundation/CallbackLifetime.h"
#include "foundation/Function.h"
#include "foundation/SharedPtr.h"
#include "foundation/String.h"
#include "foundation/data/GenericObject.h"

#include <map>
#include <utility>
#include <vector>

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

    /// Called after every change of the property, as long as the answer lives. Observers may change
    /// properties, also this one, and begin and end registrations, also their own; they find the
    /// value by asking for it. When some of them throw, the first exception reaches whoever made
    /// the change, after the last call.
    [[nodiscard]] CallbackLifetime addObserver(const String& name, Function<void()> callback);

private:
    struct Observer {
        Function<void()> callback;
        bool isRegistered = true;
    };
    using Observers = std::vector<SharedPtr<Observer>>;

    GenericObject data_;
    std::map<String, Observers> observers_;  ///< also such as are not registered any more
};

}  // namespace foundation
}  // namespace tavrin
