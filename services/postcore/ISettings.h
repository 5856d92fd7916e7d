#pragma once

#include "services/postcore/Property.h"

namespace tavrin::postcore {

/// Where post-processing parameters are read from and written to, by property id. Implementations
/// say which threads may call them.
class ISettings {
public:
    virtual ~ISettings() = default;

    virtual Property get(int id) const = 0;
    virtual void set(int id, const Property& value) = 0;
    /// True when writing has no effect.
    virtual bool isReadOnly() const = 0;
};

}  // namespace tavrin::postcore
