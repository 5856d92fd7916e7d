#include "services/postcore/bloomglare/GlareProperties.h"

#include "services/postcore/PropertyDescriptor.h"

#include <algorithm>
#include <cmath>

namespace tavrin::postcore {
namespace {

struct RangeLimiter {
    void operator()(int, bool&) const {}

    void operator()(int id, int& value) const {
        const PropertyDescriptor& descriptor = *PropertyDescriptor::get(id);
        value = std::clamp(value, descriptor.minimum.get<int>(), descriptor.maximum.get<int>());
    }

    void operator()(int id, float& value) const {
        const PropertyDescriptor& descriptor = *PropertyDescriptor::get(id);
        if (!std::isfinite(value)) {
            value = descriptor.defaultValue.get<float>();
        }
        value = std::clamp(value, descriptor.minimum.get<float>(), descriptor.maximum.get<float>());
    }

    template <class Choice>
    void operator()(int id, Choice& choice) const {
        int value = static_cast<int>(choice);
        (*this)(id, value);
        choice = static_cast<Choice>(value);
    }
};

}  // namespace

ApertureParams limitToRanges(ApertureParams params) {
    visitApertureProperties(params, RangeLimiter());
    return params;
}

GlareParams limitToRanges(GlareParams params) {
    visitGlareProperties(params, RangeLimiter());
    return params;
}

}  // namespace tavrin::postcore
