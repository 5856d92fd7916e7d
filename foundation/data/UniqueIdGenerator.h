#pragma once

#include <atomic>

namespace tavrin {
inline namespace foundation {

/// Numbers the items of lists that users edit, so that one of them can be found again while its
/// list changes. Any thread.
class UniqueIdGenerator {
public:
    static UniqueIdGenerator& getInstance() {
        static UniqueIdGenerator instance;
        return instance;
    }

    /// A number that was never given before in this process, from 1 on.
    int getNext() { return ++last_; }

private:
    UniqueIdGenerator() = default;

    std::atomic<int> last_ = 0;
};

}  // namespace foundation
}  // namespace tavrin
