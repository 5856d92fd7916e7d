#pragma once

#include "foundation/Function.h"
#include "foundation/SharedPtr.h"

#include <wx/event.h>

#include <memory>
#include <mutex>
#include <tuple>
#include <utility>

namespace tavrin::components {

/// The way into a window's event queue, which stays when the window ends. Any thread.
class MainThreadGate {
public:
    explicit MainThreadGate(wxEvtHandler& window) : window_(&window) {}

    /// Queues the call, or drops it when the gate is closed.
    void pass(Function<void()> call) {
        auto event = std::make_unique<wxThreadEvent>(wxEVT_THREAD, wxID_ANY);
        event->SetPayload(std::move(call));
        const std::lock_guard lock(mutex_);
        if (window_ != nullptr) {
            window_->QueueEvent(event.release());
        }
    }

    void close() {
        const std::lock_guard lock(mutex_);
        window_ = nullptr;
    }

private:
    std::mutex mutex_;
    wxEvtHandler* window_;  // guarded by mutex_
};

/// Lets a window take calls from any thread: they wait in its event queue and run on the main
/// thread in the order in which they came, none after the window has ended.
template <class Base>
class PassToMainThreadMixin : public Base {
public:
    template <class... Arguments>
    explicit PassToMainThreadMixin(Arguments&&... arguments)
        : Base(std::forward<Arguments>(arguments)...),
          // The window's own queue: that of a handler pushed onto it ends with the handler.
          gate_(std::make_shared<MainThreadGate>(*this)) {
        this->Bind(wxEVT_THREAD,
                   [](wxThreadEvent& event) { event.GetPayload<Function<void()>>()(); });
    }
    ~PassToMainThreadMixin() override { gate_->close(); }

    /// A function that any thread may call at any time; once the window has ended, it does nothing.
    /// It copies its arguments and queues the call, also on the main thread.
    template <class... Arguments>
    Function<void(Arguments...)> doPassToMainThread(Function<void(Arguments...)> function) {
        return [gate = gate_, function = std::move(function)](Arguments... arguments) {
            gate->pass([function, values = std::tuple<std::decay_t<Arguments>...>(arguments...)] {
                std::apply(function, values);
            });
        };
    }

private:
    const SharedPtr<MainThreadGate> gate_;
};

}  // namespace tavrin::components
