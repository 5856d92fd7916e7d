#include "foundation/data/Entity.h"

namespace tavrin {
inline namespace foundation {

void Entity::setValue(const String& name, Value value) {
    if (data_.getValue(name) == value) {
        return;
    }
    data_.setValue(name, std::move(value));
    const auto observers = observers_.find(name);
    if (observers != observers_.end()) {
        observers->second.notify();
    }
}

CallbackLifetime Entity::addObserver(const String& name, Function<void()> callback) {
    static_cast<void>(data_.getValue(name));  // refuses unknown names
    return observers_[name].add(std::move(callback));
}

}  // namespace foundation
}  // namespace tavrin
