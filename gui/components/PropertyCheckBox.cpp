#include "gui/components/PropertyCheckBox.h"

#include "gui/widgets/ScopedWindowFreezer.h"

#include <utility>

namespace tavrin::components {

using postcore::Property;

PropertyCheckBox::PropertyCheckBox(wxWindow* parent, settings::Settings& settings, int id,
                                   const String& label, Property checkedValue,
                                   Property uncheckedValue)
    : PassToMainThreadMixin(parent, wxID_ANY, label),
      settings_(settings),
      id_(id),
      checkedValue_(std::move(checkedValue)),
      uncheckedValue_(std::move(uncheckedValue)) {
    bindAll();
    onPropertyChanged_(id_, settings_.get(id_));
}

void PropertyCheckBox::bindAll() {
    onPropertyChanged_ = doPassToMainThread(Function<void(int, const Property&)>(
        [this](int, const Property& value) { setValue(value == checkedValue_, false); }));
    keep(settings_.addObserver(id_, onPropertyChanged_));
    callOnChange([this](bool isChecked) {
        settings_.set(id_, isChecked ? checkedValue_ : uncheckedValue_);
    });
}

bool PropertyCheckBox::Enable(bool enable) {
    const widgets::ScopedWindowFreezer freezer(this);
    return PassToMainThreadMixin::Enable(enable);
}

}  // namespace tavrin::components
