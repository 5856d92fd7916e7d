#pragma once

#include "services/colorkit/IMappingStage.h"
#include "services/colorkit/Matrix3.h"

namespace tavrin::colorkit {

/// Multiplies colours, as columns, by a matrix. Results beyond the largest float become that.
class MatrixStage final : public IMappingStage {
public:
    /// The sum of the magnitudes of each row must be below 2^100.
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
