#pragma once

#include "services/postcore/ISettings.h"
#include "services/postcore/PropertyDescriptor.h"

#include <map>

namespace tavrin::tests {

/// Settings without observers that keep exactly what was written; reading others gives defaults.
class MapSettings final : public postcore::ISettings {
public:
    postcore::Property get(int id) const override {
        const auto found = values.find(id);
        return found != values.end() ? found->second
                                     : postcore::PropertyDescriptor::get(id)->defaultValue;
    }
    void set(int id, const postcore::Property& value) override {
        values.insert_or_assign(id, value);
    }
    bool isReadOnly() const override { return false; }

    std::map<int, postcore::Property> values;
};

}  // namespace tavrin::tests
