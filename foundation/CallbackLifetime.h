#pragma once

#include <memory>
#include <utility>
#include <vector>

namespace tavrin {
inline namespace foundation {

/// The registration of a callback: it stays registered exactly as long as this handle lives. When
/// the handle has ended, the callback neither runs nor will run. One thread at a time.
class CallbackLifetime {
public:
    /// Nothing is registered.
    CallbackLifetime() = default;
    /// Calls `end` once, without arguments, when the handle ends.
    template <class End>
    explicit CallbackLifetime(End end)
        // A shared pointer to nothing with a deleter: the smallest owner of any action.
        : registration_(nullptr, [end = std::move(end)](std::nullptr_t) { end(); }) {}

    CallbackLifetime(CallbackLifetime&&) = default;
    CallbackLifetime& operator=(CallbackLifetime&&) = default;

private:
    std::shared_ptr<void> registration_;
};

/// Base of long-lived objects that keep their registrations for as long as they live. Only the
/// object itself uses it.
class CallbacksOwner {
protected:
    void keep(CallbackLifetime lifetime) { lifetimes_.push_back(std::move(lifetime)); }
    /// Ends all registrations. A class whose callbacks use its own members calls it in its
    /// destructor.
    void endCallbacks() { lifetimes_.clear(); }

private:
    std::vector<CallbackLifetime> lifetimes_;
};

}  // namespace foundation
}  // namespace tavrin
