#pragma once

#include "base/pipeline/IAsync.h"
#include "base/pipeline/UpdateWorker.h"

namespace tavrin::pipeline {

/// Makes an operator asynchronous: it overrides update(), which computes and keeps a whole result,
/// and answers requests from what it keeps. Base is ProgressMixin<IOperator>.
template <class Base>
class AsyncMixin : public Base, public IAsync {
public:
    bool wait() final { return worker_.wait(); }
    /// Ends the computation that runs, as soon as it can, and puts off one that is pending.
    void cancel() { worker_.cancel(); }

protected:
    /// Asks for one computation and returns at once; `name` is the operator's in the pipeline, and
    /// becomes part of the name of its thread.
    void run(const String& name) { worker_.request(name); }
    /// True when a computation should end early.
    bool isStopping() const { return worker_.isStopping(); }
    /// The first step of the destructor of every operator that overrides update().
    void shutDown() { worker_.shutDown(); }

private:
    /// Called only on the operator's own thread. Must not throw.
    virtual void update() = 0;

    UpdateWorker worker_{[this] { update(); }};
};

}  // namespace tavrin::pipeline
