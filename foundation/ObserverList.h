#pragma once

#include "foundation/CallbackLifetime.h"
#include "foundation/Function.h"
#include "foundation/SharedPtr.h"

#include <algorithm>
#include <cstdint>
#include <exception>
#include <mutex>
#include <utility>
#include <vector>

namespace tavrin {
inline namespace foundation {

/// The observers of one thing, called in the order of their registration. Any thread may register,
/// notify and end a registration. Ending one waits for a notification that runs, so an observer
/// must neither notify the list that calls it nor register with it nor end a registration of it.
template <class... Arguments>
class ObserverList {
public:
    using Callback = Function<void(const Arguments&...)>;

    /// The callback is registered as long as the answer lives, which may be longer than the list.
    [[nodiscard]] CallbackLifetime add(Callback callback) {
        const std::lock_guard lock(entries_->mutex);
        const std::uint64_t serial = entries_->nextSerial++;
        entries_->list.push_back({serial, std::move(callback)});
        return CallbackLifetime([entries = entries_, serial] { entries->remove(serial); });
    }

    /// Calls every observer. When some of them throw, the first exception reaches the caller after
    /// the last call.
    void notify(const Arguments&... arguments) const {
        std::exception_ptr first;
        {
            const std::lock_guard lock(entries_->mutex);
            for (const Entry& entry : entries_->list) {
                try {
                    entry.callback(arguments...);
                } catch (...) {
                    first = first ? first : std::current_exception();
                }
            }
        }
        if (first) {
            std::rethrow_exception(first);
        }
    }

private:
    struct Entry {
        std::uint64_t serial;
        Callback callback;
    };

    struct Entries {
        std::mutex mutex;
        // Guarded by mutex.
        std::uint64_t nextSerial = 0;
        std::vector<Entry> list;

        void remove(std::uint64_t serial) {
            const std::lock_guard lock(mutex);
            std::erase_if(list, [serial](const Entry& entry) { return entry.serial == serial; });
        }
    };

    SharedPtr<Entries> entries_ = std::make_shared<Entries>();
};

}  // namespace foundation
}  // namespace tavrin
