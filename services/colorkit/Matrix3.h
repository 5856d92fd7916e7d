#pragma once

#include <algorithm>
#include <array>
#include <cmath>

namespace tavrin::colorkit {

/// Three numbers of a colour or of a colour stimulus (X, Y, Z).
using Vector3 = std::array<double, 3>;

/// A 3 × 3 matrix by rows.
struct Matrix3 {
    std::array<Vector3, 3> rows;

    static constexpr Matrix3 diagonal(const Vector3& values) {
        return {{{{values[0], 0, 0}, {0, values[1], 0}, {0, 0, values[2]}}}};
    }

    friend constexpr Vector3 operator*(const Matrix3& matrix, const Vector3& vector) {
        Vector3 product{};
        for (int i = 0; i < 3; ++i) {
            for (int k = 0; k < 3; ++k) {
                product[i] += matrix.rows[i][k] * vector[k];
            }
        }
        return product;
    }

    friend constexpr Matrix3 operator*(const Matrix3& left, const Matrix3& right) {
        Matrix3 product{};
        for (int i = 0; i < 3; ++i) {
            for (int j = 0; j < 3; ++j) {
                for (int k = 0; k < 3; ++k) {
                    product.rows[i][j] += left.rows[i][k] * right.rows[k][j];
                }
            }
        }
        return product;
    }
};

/// The inverse by cofactors; the matrix must not be singular.
constexpr Matrix3 inverse(const Matrix3& matrix) {
    const auto& m = matrix.rows;
    Matrix3 cofactors{};
    for (int i = 0; i < 3; ++i) {
        const int i1 = (i + 1) % 3;
        const int i2 = (i + 2) % 3;
        for (int j = 0; j < 3; ++j) {
            const int j1 = (j + 1) % 3;
            const int j2 = (j + 2) % 3;
            cofactors.rows[i][j] = m[i1][j1] * m[i2][j2] - m[i1][j2] * m[i2][j1];
        }
    }
    const auto& c = cofactors.rows;
    const double determinant = m[0][0] * c[0][0] + m[0][1] * c[0][1] + m[0][2] * c[0][2];
    Matrix3 result{};
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j) {
            result.rows[i][j] = c[j][i] / determinant;
        }
    }
    return result;
}

/// The largest sum of the magnitudes of a row: how much the matrix can enlarge a component.
inline double largestRowSum(const Matrix3& matrix) {
    double largest = 0.0;
    for (const Vector3& row : matrix.rows) {
        largest = std::max(largest, std::abs(row[0]) + std::abs(row[1]) + std::abs(row[2]));
    }
    return largest;
}

}  // namespace tavrin::colorkit
