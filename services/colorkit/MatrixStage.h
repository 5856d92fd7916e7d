#pragma once

#include "services/colorkit/IMappingStage.h"
#include "services/colorkit/Matrix3.h"

namespace tavrin::colorkit {

/// Multiplies colours, as columns, by a matrix. Results beyond the largest float become that.
class MatrixStage final : public IMappingStage {
public:
    /// What the magnitudes of a row may sum up to: 2^100.
    static constexpr double kLargestRowSum = 0x1p100;

    /// No row may exceed kLargestRowSum.
    explicit MatrixStage(const Matrix3& matrix);

    void apply(PixelBlock& block) const override;

    /// The matrix divided by `scale`, a power of two so large that products with it cannot
    /// overflow.
    struct Factors {
        float rows[3][3];
        float scale;
    };

private:
    Factors factors_;
};

}  // namespace tavrin::colorkit
