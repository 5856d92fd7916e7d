#pragma once

#include "base/settings/Settings.h"
#include "services/colorkit/ColorMapping.h"

namespace tavrin::pipeline {

/// Adds the settings, and for operators that map colours the colour mapping. Both are set once,
/// before the operator is used, and outlive it.
template <class Base>
class SettingsMixin : public Base {
public:
    void setSettings(settings::Settings& settings) { settings_ = &settings; }
    void setColorMapping(colorkit::ColorMapping& colorMapping) { colorMapping_ = &colorMapping; }

protected:
    settings::Settings& settings() const { return *settings_; }
    colorkit::ColorMapping& colorMapping() const { return *colorMapping_; }

private:
    settings::Settings* settings_ = nullptr;
    colorkit::ColorMapping* colorMapping_ = nullptr;
};

}  // namespace tavrin::pipeline
