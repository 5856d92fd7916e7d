#pragma once

namespace tavrin::pipeline {

/// An operator that computes whole results on a thread of its own.
class IAsync {
public:
    virtual ~IAsync() = default;

    /// When a computation has been asked for and has not started, blocks until it has ended. False
    /// when it is not going to start, as the operator has been cancelled or is ending. Returns at
    /// once when a computation runs and no further one has been asked for, and on the operator's
    /// own thread. Any thread.
    virtual bool wait() = 0;
};

}  // namespace tavrin::pipeline
