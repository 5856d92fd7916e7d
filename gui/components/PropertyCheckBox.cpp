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
    // Read only when it is shown, as another thread may write before that.
    doPassToMainThread(Function<void()>([this] { follow(settings_.get(id_)); }))();
}

void PropertyCheckBox::bindAll() {
    keep(settings_.addObserver(id_, doPassToMainThread(Function<void(int, const Property&)>(
                                        [this](int, const Property& value) { follow(value); }))));
    callOnChange([this](bool isChecked) {
        settings_.set(id_, isChecked ? checkedValue_ : uncheckedValue_);
    });
}

void PropertyCheckBox::follow(const Property& value) {
    setValue(value == checkedValue_, false);
}

bool PropertyCheckBox::Enable(bool enable) {
    const widgets::ScopedWindowFreezer freezer(this);
    return PassToMainThreadMixin::Enable(enable);
}

}  // namespace tavrin::components
