#pragma once

#include <atomic>

namespace tavrin::colorkit {

/// Numbers the operators of a process, so that one of them can be found again while pipelines
/// change. Any thread.
class UniqueIdGenerator {
public:
    static UniqueIdGenerator& getInstance() {
        static UniqueIdGenerator instance;
        return instance;
    }

    /// A number that was never given before, from 1 on.
    int getNext() { return ++last_; }

private:
    UniqueIdGenerator() = default;

    std::atomic<int> last_ = 0;
};

}  // namespace tavrin::colorkit
