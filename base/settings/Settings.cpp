#include "base/settings/Settings.h"

#include "foundation/Exception.h"
#include "foundation/NumberText.h"
#include "services/postcore/Conf.h"
#include "services/postcore/PropertyDescriptor.h"

#include <algorithm>

namespace tavrin::settings {
namespace {

using postcore::PropertyDescriptor;

String getName(int id) {
    const PropertyDescriptor* descriptor = PropertyDescriptor::get(id);
    return descriptor != nullptr ? descriptor->name : Str::getNumberText(id);
}

}  // namespace

postcore::Property Settings::get(int id) const {
    const std::lock_guard lock(valueMutex_);
    const auto found = values_.find(id);
    if (found != values_.end()) {
        return found->second;
    }
    const PropertyDescriptor* descriptor = PropertyDescriptor::get(id);
    if (descriptor == nullptr) {
        throw Exception("Requested property id is not defined.");
    }
    return values_.emplace(id, descriptor->defaultValue).first->second;
}

void Settings::set(int id, const Property& value) {
    const std::lock_guard observerLock(observerMutex_);
    // Observers are told the copy, so that they may change what `value` refers to.
    const Property copy = value;
    {
        const std::lock_guard valueLock(valueMutex_);
        const auto [stored, isNew] = values_.try_emplace(id, copy);
        if (!isNew) {
            if (stored->second == copy) {
                return;
            }
            stored->second = copy;
        }
    }
    observers_[id].notify(id, copy);
}

CallbackLifetime Settings::addObserver(int id, Observer observer) {
    const std::lock_guard lock(observerMutex_);
    return observers_[id].add(std::move(observer));
}

void Settings::copyFrom(const Settings& source, const IdFilter& filter) {
    {
        const std::lock_guard lock(source.valueMutex_);
        for (const auto& [id, value] : source.values_) {
            if (filter(id)) {
                set(id, value);
            }
        }
    }
    validateAll();
}

void Settings::validateAll() const {
    const std::lock_guard lock(valueMutex_);
    for (const auto& [id, value] : values_) {
        String failure;
        if (!validateValue(id, value, &failure)) {
            throw Exception("Property " + getName(id) + " is invalid. " + failure);
        }
    }
}

void Settings::save(const Path& path, const std::vector<int>& ids) const {
    postcore::Conf::save(*this, path,
                         [&ids](int id) { return std::ranges::find(ids, id) != ids.end(); });
}

bool Settings::validateValue(int id, const Property& value, String* failure) {
    const PropertyDescriptor* descriptor = PropertyDescriptor::get(id);
    const Result<void> check =
        descriptor != nullptr ? descriptor->check(value) : Failure("Value is unrecognized.");
    if (!check && failure != nullptr) {
        *failure = check.error();
    }
    return check.has_value();
}

}  // namespace tavrin::settings
