#pragma once

#include "foundation/Function.h"

#include <wx/event.h>

#include <tuple>
#include <utility>

namespace tavrin::components {

/// Lets a window take calls from any thread: they wait in its event queue and run on the main
/// thread in the order in which they came, none after the window has ended.
template <class Base>
class PassToMainThreadMixin : public Base {
public:
    template <class... Arguments>
    explicit PassToMainThreadMixin(Arguments&&... arguments)
        : Base(std::forward<Arguments>(arguments)...) {
        this->Bind(wxEVT_THREAD,
                   [](wxThreadEvent& event) { event.GetPayload<Function<void()>>()(); });
    }

    /// A function that any thread may call while the window lives. It copies its arguments and
    /// queues the call, also on the main thread.
    template <class... Arguments>
    Function<void(Arguments...)> doPassToMainThread(Function<void(Arguments...)> function) {
        return [this, function = std::move(function)](Arguments... arguments) {
            auto* event = new wxThreadEvent(wxEVT_THREAD, wxID_ANY);
            event->SetPayload(Function<void()>(
                [function, values = std::tuple<std::decay_t<Arguments>...>(arguments...)] {
                    std::apply(function, values);
                }));
            wxQueueEvent(this->GetEventHandler(), event);
        };
    }
};

}  // namespace tavrin::components
