#pragma once

#include <memory>
#include <type_traits>
#include <typeinfo>
#include <utility>

namespace tavrin {
inline namespace foundation {

/// A value of any type that can be copied and compared. It never changes, and copies share it, so
/// that copying is cheap and any thread may read it.
class Value {
public:
    /// Pointers, and with them texts in quotes, are no values: they would be compared by address.
    template <class T>
    requires(!std::is_same_v<T, Value> && !std::is_pointer_v<T>) explicit Value(T value)
        : content_(std::make_shared<const Typed<T>>(std::move(value))) {}

    /// Null when the value is of another type. Lives as long as one of the copies.
    template <class T>
    const T* get() const {
        const auto* typed = dynamic_cast<const Typed<T>*>(content_.get());
        return typed == nullptr ? nullptr : &typed->value;
    }

    /// Whether both have the same type and compare equal.
    friend bool operator==(const Value& left, const Value& right) {
        return left.content_ == right.content_ || left.content_->isSame(*right.content_);
    }

private:
    struct Content {
        virtual ~Content() = default;
        virtual bool isSame(const Content& other) const = 0;
    };

    template <class T>
    struct Typed final : Content {
        explicit Typed(T initial) : value(std::move(initial)) {}

        bool isSame(const Content& other) const override {
            const auto* typed = dynamic_cast<const Typed*>(&other);
            return typed != nullptr && value == typed->value;
        }

        const T value;
    };

    std::shared_ptr<const Content> content_;
};

}  // namespace foundation
}  // namespace tavrin
