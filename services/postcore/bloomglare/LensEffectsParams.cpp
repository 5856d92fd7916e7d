#include "services/postcore/bloomglare/LensEffectsParams.h"

#include "services/postcore/bloomglare/GlareProperties.h"

#include <type_traits>

namespace tavrin::postcore {
namespace {

struct Loader {
    template <class T>
    void operator()(int id, T& value) const {
        if constexpr (std::is_enum_v<T>) {
            value = static_cast<T>(settings.get(id).template get<int>());
        } else {
            value = settings.get(id).template get<T>();
        }
    }

    const ISettings& settings;
};

struct Saver {
    template <class T>
    void operator()(int id, T value) const {
        if constexpr (std::is_enum_v<T>) {
            settings.set(id, static_cast<int>(value));
        } else {
            settings.set(id, value);
        }
    }

    ISettings& settings;
};

}  // namespace

ApertureParams LensEffectsParams::loadApertureFromSettings(const ISettings& settings) {
    ApertureParams params;
    visitApertureProperties(params, Loader{settings});
    return params;
}

GlareParams LensEffectsParams::loadGlareFromSettings(const ISettings& settings) {
    GlareParams params;
    visitGlareProperties(params, Loader{settings});
    return params;
}

void LensEffectsParams::saveApertureToSettings(const ApertureParams& params, ISettings& settings) {
    visitApertureProperties(params, Saver{settings});
}

}  // namespace tavrin::postcore
