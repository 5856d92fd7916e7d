#include "gui/components/PropertySpinner.h"

#include <wx/spinctrl.h>

namespace tavrin::components {
namespace {

using postcore::Property;

template <class T>
float read(const Property& property) {
    return static_cast<float>(property.get<T>());
}

}  // namespace

template <class T>
PropertySpinner<T>::PropertySpinner(wxWindow* parent, settings::Settings& settings,
                                    const postcore::PropertyDescriptor& descriptor, int precision,
                                    float extra, int width)
    : PassToMainThreadMixin(parent, wxID_ANY, width, read<T>(descriptor.minimum),
                            read<T>(descriptor.maximum), read<T>(descriptor.defaultValue),
                            precision, extra),
      settings_(settings),
      id_(descriptor.id) {
    bindAll();
    // Read only when it is shown, as another thread may write before that.
    doPassToMainThread(Function<void()>([this] { follow(settings_.get(id_)); }))();
}

template <class T>
void PropertySpinner<T>::bindAll() {
    keep(settings_.addObserver(id_, doPassToMainThread(Function<void(int, const Property&)>(
                                        [this](int, const Property& value) { follow(value); }))));
    Bind(wxEVT_SPINCTRLDOUBLE, [this](wxSpinDoubleEvent&) { write(); });
}

template <class T>
void PropertySpinner<T>::follow(const Property& value) {
    const T number = value.get<T>();
    // Written so that a float that is not a number counts as new.
    if (!(number == static_cast<T>(getValue()))) {
        setValue(static_cast<float>(number), false);
    }
}

template <class T>
void PropertySpinner<T>::write() {
    settings_.set(id_, Property(static_cast<T>(getValue())));
    Refresh(true);
    Update();
}

template class PropertySpinner<int>;
template class PropertySpinner<float>;

}  // namespace tavrin::components
