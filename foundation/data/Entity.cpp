#include "foundation/data/Entity.h"

#include <exception>

namespace tavrin {
inline namespace foundation {

void Entity::setValue(const String& name, Value value) {
    if (data_.getValue(name) == value) {
        return;
    }
    data_.setValue(name, std::move(value));
    // A copy, as observers may come and go meanwhile.
    const Observers observers = observers_[name];
    std::exception_ptr first;
    for (const SharedPtr<Observer>& observer : observers) {
        try {
            if (observer->isRegistered) {
                observer->callback();
            }
        } catch (...) {
            first = first ? first : std::current_exception();
        }
    }
    if (first) {
        std::rethrow_exception(first);
    }
}

CallbackLifetime Entity::addObserver(const String& name, Function<void()> callback) {
    static_cast<void>(data_.getValue(name));  // refuses unknown names
    Observers& observers = observers_[name];
    std::erase_if(observers, [](const auto& observer) { return !observer->isRegistered; });
    const auto observer = std::make_shared<Observer>(Observer{std::move(callback)});
    observers.push_back(observer);
    return CallbackLifetime([observer] { observer->isRegistered = false; });
}

}  // namespace foundation
}  // namespace tavrin
