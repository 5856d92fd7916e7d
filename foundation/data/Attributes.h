#pragma once

#include "foundation/String.h"

#include <any>
#include <map>
#include <utility>

namespace tavrin {
inline namespace foundation {

/// What is said about a type or a property besides its values, by key: names, descriptions, ways of
/// showing it. A value may have any type that can be copied, functions too.
class Attributes {
public:
    template <class T>
    void set(const String& key, T value) {
        values_.insert_or_assign(key, std::any(std::move(value)));
    }

    /// Null when there is none of that key and type.
    template <class T>
    const T* get(const String& key) const {
        const auto found = values_.find(key);
        return found == values_.end() ? nullptr : std::any_cast<T>(&found->second);
    }

private:
    std::map<String, std::any> values_;
};

}  // namespace foundation
}  // namespace tavrin
