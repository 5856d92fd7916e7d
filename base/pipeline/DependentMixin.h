#pragma once

#include "base/pipeline/IAsync.h"
#include "base/pipeline/IOperator.h"

#include <algorithm>
#include <array>

namespace tavrin::pipeline {

/// Adds N inputs. What the operator does not answer by itself is forwarded to input 0.
template <int N, class Base>
class DependentMixin : public Base {
public:
    /// Each input is set once, before the operator is used; it outlives the operator.
    void setInput(IOperator& input, int index = 0) {
        inputs_[std::size_t(index)] = {&input, dynamic_cast<IAsync*>(&input)};
    }

    std::int64_t getRevision() const override { return input().getRevision(); }
    std::vector<image::ElementInfo> getElements() const override { return input().getElements(); }
    Bucket getDisplayWindow() const override { return input().getDisplayWindow(); }
    Bucket getDataWindow() const override { return input().getDataWindow(); }

protected:
    IOperator& input(int index = 0) const { return *inputs_[std::size_t(index)].op; }

    /// Whether an element of this name comes in with the flag.
    bool isFlagged(const String& element, image::ElementFlag flag) const {
        return std::ranges::any_of(input().getElements(), [&](const image::ElementInfo& info) {
            return info.name == element && info.has(flag);
        });
    }

    /// Asks an input. With IOperator::Control::Wait this first waits for a computation that is
    /// pending there; the answer is empty when it is not going to start.
    Optional<BitmapImpl<Rgb>> requestRgb(const IOperator::Request& request, int index = 0) const {
        return isReady(request, index) ? Base::forwardRgb(input(index), request) : std::nullopt;
    }
    Optional<BitmapImpl<float>> requestMono(const IOperator::Request& request,
                                            int index = 0) const {
        return isReady(request, index) ? Base::forwardMono(input(index), request) : std::nullopt;
    }

    /// The same for requests of the operator's own, which nobody has checked.
    Optional<BitmapImpl<Rgb>> pullRgb(const IOperator::Request& request, int index = 0) const {
        return isReady(request, index) ? input(index).provideRgbRegion(request) : std::nullopt;
    }
    Optional<BitmapImpl<float>> pullMono(const IOperator::Request& request, int index = 0) const {
        return isReady(request, index) ? input(index).provideMonoRegion(request) : std::nullopt;
    }

    Optional<BitmapImpl<float>> computeMonoRegion(const IOperator::Request& request) override {
        return requestMono(request);
    }

private:
    bool isReady(const IOperator::Request& request, int index) const {
        IAsync* async = inputs_[std::size_t(index)].async;
        return async == nullptr || !request.flags.has(IOperator::Control::Wait) || async->wait();
    }

    struct Input {
        IOperator* op = nullptr;
        IAsync* async = nullptr;  ///< the same operator, when it is asynchronous
    };
    std::array<Input, N> inputs_;
};

}  // namespace tavrin::pipeline
