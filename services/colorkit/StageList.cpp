#include "services/colorkit/StageList.h"

#include "services/colorkit/MatrixStage.h"

#include <utility>

namespace tavrin::colorkit {

void StageList::add(std::unique_ptr<const IMappingStage> stage) {
    flushMatrix();
    stages_.push_back(std::move(stage));
}

void StageList::addMatrix(const Matrix3& matrix) {
    const Matrix3 fused = pendingMatrix_ ? matrix * *pendingMatrix_ : matrix;
    if (largestRowSum(fused) <= MatrixStage::kLargestRowSum) {
        pendingMatrix_ = fused;
    } else {
        flushMatrix();
        pendingMatrix_ = matrix;
    }
}

std::vector<std::unique_ptr<const IMappingStage>> StageList::take() {
    flushMatrix();
    return std::exchange(stages_, {});
}

void StageList::flushMatrix() {
    if (pendingMatrix_) {
        stages_.push_back(std::make_unique<MatrixStage>(*pendingMatrix_));
        pendingMatrix_.reset();
    }
}

}  // namespace tavrin::colorkit
