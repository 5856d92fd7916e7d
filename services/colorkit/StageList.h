#pragma once

#include "foundation/Optional.h"
#include "services/colorkit/IMappingStage.h"
#include "services/colorkit/Matrix3.h"

#include <memory>
#include <vector>

namespace tavrin::colorkit {

/// Collects the stages of a mapping in the order in which they work on a colour. Matrices that
/// follow each other become one. One thread at a time.
class StageList {
public:
    void add(std::unique_ptr<const IMappingStage> stage);
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
