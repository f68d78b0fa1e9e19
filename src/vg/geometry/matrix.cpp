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

/// The determinant of the 2 x 2 matrix left when `row` and `column` are struck out, with its sign
/// in the expansion: indices taken cyclically supply the sign.
double cofactor(const Matrix3& matrix, int row, int column) noexcept {
    const auto at = [&](int dy, int dx) {
        return static_cast<double>(matrix.m[(row + dy) % 3][(column + dx) % 3]);
    };
    return at(1, 1) * at(2, 2) - at(1, 2) * at(2, 1);
}

/// inverse(i, j) = cofactor(j, i) / determinant. False without an inverse in float range. Products
/// of three floats, and quotients of those, stay far inside the range of double.
bool invert(const Matrix3& matrix, Matrix3& inverse) noexcept {
    double determinant = 0.0;
    for (int i = 0; i < 3; ++i) determinant += matrix.m[0][i] * cofactor(matrix, 0, i);
    if (determinant == 0.0) return false;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            const double entry = cofactor(matrix, column, row) / determinant;
            if (std::fabs(entry) > kLargestFloat) return false;
            inverse.m[row][column] = static_cast<float>(entry);
        }
    }
    return true;
}

/// Singular values of the linear part: it is the sum of a similarity and a reflected similarity,
/// whose factors add up in one direction and counteract each other in the one across it.
void findScales(const Matrix3& matrix, float scales[2]) noexcept {
    const double a = matrix.m[0][0];
    const double b = matrix.m[0][1];
    const double c = matrix.m[1][0];
    const double d = matrix.m[1][1];
    const auto half = [](double x, double y) { return std::sqrt(x * x + y * y) * 0.5; };
    const double similarity = half(a + d, c - b);
    const double reflection = half(a - d, c + b);
    scales[0] = toFloat(similarity + reflection);
    scales[1] = toFloat(std::fabs(similarity - reflection));
}

}  // namespace

void UserMatrix::setIdentity() noexcept { *this = UserMatrix(); }

void UserMatrix::update() noexcept {
    if ((staleFlags & kInverseStale) != 0) isSingular = !invert(value, inverse);
    updateScales();
    staleFlags = 0;
}

void UserMatrix::updateScales() noexcept {
    if ((staleFlags & kScalesStale) == 0) return;
    findScales(value, scales);
    staleFlags &= ~kScalesStale;
}

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

}  // namespace vg
