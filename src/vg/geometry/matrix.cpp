#include "vg/geometry/matrix.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/finite.h"

namespace vg {
namespace {

constexpr double kLargestFloat = std::numeric_limits<float>::max();

/// The nearest float; the largest one of its sign beyond the range.
float toFloat(double value) noexcept {
    return static_cast<float>(std::clamp(value, -kLargestFloat, kLargestFloat));
}

}  // namespace

Matrix3 multiply(const Matrix3& a, const Matrix3& b) noexcept {
    Matrix3 product;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            double sum = 0.0;
            for (int i = 0; i < 3; ++i) {
                sum += static_cast<double>(a.m[row][i]) * static_cast<double>(b.m[i][column]);
            }
            product.m[row][column] = toFloat(sum);
        }
    }
    return product;
}

// A 2 x 2 matrix is the sum of a similarity and a mirrored similarity, whose factors add up in one
// direction and counteract each other in the one across it (J. Blinn, "Consider the lowly 2 x 2
// matrix", 1996).
float largestScale(const Matrix3& matrix) noexcept {
    const double a = matrix.m[0][0];
    const double b = matrix.m[0][1];
    const double c = matrix.m[1][0];
    const double d = matrix.m[1][1];
    const auto half = [](double x, double y) { return std::sqrt(x * x + y * y) * 0.5; };
    return toFloat(half(a + d, c - b) + half(a - d, c + b));
}

}  // namespace vg
