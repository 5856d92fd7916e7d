#pragma once

#include "base/settings/Settings.h"
#include "foundation/CallbackLifetime.h"
#include "gui/components/PassToMainThreadMixin.h"
#include "gui/widgets/Spinner.h"
#include "services/postcore/PropertyDescriptor.h"

namespace tavrin::components {

/// A spinner of one number of the settings, with range and default of its descriptor: it writes
/// what the user chooses, and follows what anybody else writes, from whatever thread. T is int or
/// float. The settings outlive it.
template <class T>
class PropertySpinner final : public PassToMainThreadMixin<widgets::Spinner>,
                              private CallbacksOwner {
public:
    /// Width, precision and extra are those of the Spinner. The value comes with the next events.
    PropertySpinner(wxWindow* parent, settings::Settings& settings,
                    const postcore::PropertyDescriptor& descriptor, int precision, float extra,
                    int width);
    ~PropertySpinner() override { endCallbacks(); }

private:
    void bindAll();
    void follow(const postcore::Property& value);
    void write();

    settings::Settings& settings_;
    const int id_;
};

extern template class PropertySpinner<int>;
extern template class PropertySpinner<float>;

}  // namespace tavrin::components
