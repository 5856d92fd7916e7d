#pragma once

#include "foundation/Optional.h"
#include "services/colorkit/IMappingStage.h"
#include "services/colorkit/Matrix3.h"

#include <concepts>
#include <memory>
#include <utility>
#include <vector>

namespace tavrin::colorkit {

/// A stage that is nothing but a function.
template <class Function>
class FunctionStage final : public IMappingStage {
public:
    explicit FunctionStage(Function function) : function_(std::move(function)) {}

    void apply(PixelBlock& block) const override { function_(block); }

private:
    Function function_;
};

/// Collects the stages of a mapping in the order in which they work on a colour. Matrices that
/// follow each other become one. One thread at a time.
class StageList {
public:
    void add(std::unique_ptr<const IMappingStage> stage);
    /// A function that does what IMappingStage::apply does: mostly a lambda that holds a kernel's
    /// numbers and calls the kernel for the instruction set at hand.
    template <class Function>
    requires std::invocable<const Function&, PixelBlock&>
    void add(Function function) {
        add(std::unique_ptr<const IMappingStage>(
            std::make_unique<FunctionStage<Function>>(std::move(function))));
    }
    /// A matrix on the column (r, g, b), within the limit of MatrixStage.
    void addMatrix(const Matrix3& matrix);
    /// Hands the stages over; the list is empty afterwards.
    std::vector<std::unique_ptr<const IMappingStage>> take();

private:
    void flushMatrix();

    std::vector<std::unique_ptr<const IMappingStage>> stages_;
    Optional<Matrix3> pendingMatrix_;
};

}  // namespace tavrin::colorkit
