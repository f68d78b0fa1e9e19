// Inverts by Cramer's rule in double, and measures each determinant against the sizes of its
// products: a difference that is nothing but their rounding counts as 0.

#include "vg/paint/inverse_map.h"

#include <algorithm>
#include <cmath>

namespace vg {
namespace {

constexpr double kRounding = 1e-14;

/// A product of the determinant or of one of its minors.
struct Product {
    double value, size;
};

/// The minor left when row and column are struck out, signed: indices taken cyclically supply the
/// sign. `size` is what it would be if its products did not cancel.
Product cofactor(const Matrix3& matrix, int row, int column) noexcept {
    const auto at = [&](int dy, int dx) {
        return static_cast<double>(matrix.m[(row + dy) % 3][(column + dx) % 3]);
    };
    const double a = at(1, 1) * at(2, 2);
    const double b = at(1, 2) * at(2, 1);
    return {a - b, std::fabs(a) + std::fabs(b)};
}

Product determinantOf(const Matrix3& matrix) noexcept {
    Product sum = {0.0, 0.0};
    for (int i = 0; i < 3; ++i) {
        const Product minor = cofactor(matrix, 0, i);
        const auto entry = static_cast<double>(matrix.m[0][i]);
        sum.value += entry * minor.value;
        sum.size += std::fabs(entry) * minor.size;
    }
    return sum;
}

bool vanishes(const Product& determinant) noexcept {
    return !(std::fabs(determinant.value) > kRounding * determinant.size);
}

}  // namespace

AffineMap multiply(const AffineMap& a, const AffineMap& b) noexcept {
    AffineMap product;
    product.m00 = a.m00 * b.m00 + a.m01 * b.m10;
    product.m01 = a.m00 * b.m01 + a.m01 * b.m11;
    product.m02 = a.m00 * b.m02 + a.m01 * b.m12 + a.m02;
    product.m10 = a.m10 * b.m00 + a.m11 * b.m10;
    product.m11 = a.m10 * b.m01 + a.m11 * b.m11;
    product.m12 = a.m10 * b.m02 + a.m11 * b.m12 + a.m12;
    return product;
}

bool isAffine(const Matrix3& matrix) noexcept {
    return matrix.m[2][0] == 0.0F && matrix.m[2][1] == 0.0F && matrix.m[2][2] == 1.0F;
}

/// Products of floats, and quotients of those, stay within double.
bool invert(const AffineMap& map, raster::SurfaceToPaint& inverse) noexcept {
    const double size = std::fabs(map.m00 * map.m11) + std::fabs(map.m01 * map.m10);
    const double determinant = map.determinant();
    if (vanishes({determinant, size})) return false;
    inverse.m00 = map.m11 / determinant;
    inverse.m01 = -map.m01 / determinant;
    inverse.m02 = (map.m01 * map.m12 - map.m11 * map.m02) / determinant;
    inverse.m10 = -map.m10 / determinant;
    inverse.m11 = map.m00 / determinant;
    inverse.m12 = (map.m10 * map.m02 - map.m00 * map.m12) / determinant;
    for (const double entry :
         {inverse.m00, inverse.m01, inverse.m02, inverse.m10, inverse.m11, inverse.m12}) {
        if (!(std::fabs(entry) <= raster::SurfaceToPaint::kLargestEntry)) return false;
    }
    return true;
}

bool invert(const AffineMap& map, raster::SurfaceToTexture& inverse) noexcept {
    raster::SurfaceToPaint affine;
    if (!invert(map, affine)) return false;
    inverse = {{{affine.m00, affine.m01, affine.m02},
                {affine.m10, affine.m11, affine.m12},
                {0.0, 0.0, 1.0}}};
    return true;
}

/// The adjugate, with the determinant's sign, scaled so that its largest entry is 1.
bool invertProjective(const Matrix3& matrix, raster::SurfaceToTexture& inverse) noexcept {
    const Product determinant = determinantOf(matrix);
    if (vanishes(determinant)) return false;
    double largest = 0.0;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            inverse.m[row][column] = cofactor(matrix, column, row).value;
            largest = std::max(largest, std::fabs(inverse.m[row][column]));
        }
    }
    const double factor = std::copysign(largest, determinant.value);
    for (auto& row : inverse.m) {
        for (double& entry : row) entry /= factor;
    }
    return true;
}

}  // namespace vg
