#include "svg/rect.h"

#include <algorithm>
#include <cmath>

namespace quor {
namespace {

constexpr float kRootOfTwo = 1.4142135F;

float diagonalOf(float width, float height) noexcept {
    if (width == 0.0F) return std::fabs(height) / kRootOfTwo;
    return base::finite(std::sqrt(width * width + height * height) / kRootOfTwo);
}

}  // namespace

void Rect::set(float newX, float newY, float newWidth, float newHeight) noexcept {
    x = newX;
    y = newY;
    width = newWidth > 0.0F ? newWidth : 0.0F;
    height = newHeight > 0.0F ? newHeight : 0.0F;
    diagonal = diagonalOf(width, height);
}

void Box::unite(const Box& other) noexcept {
    if (other.isEmpty()) return;
    if (isEmpty()) {
        *this = other;
        return;
    }
    minX = std::min(minX, other.minX);
    minY = std::min(minY, other.minY);
    maxX = std::max(maxX, other.maxX);
    maxY = std::max(maxY, other.maxY);
}

}  // namespace quor
