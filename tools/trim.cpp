#include "trim.h"

#include <algorithm>

namespace tool {

void BoundsFinder::includeRow(const std::uint32_t* pixels) {
    const auto isDrawn = [this](std::uint32_t pixel) { return pixel != background_; };
    const std::uint32_t* end = pixels + width_;
    const std::uint32_t* first = std::find_if(pixels, end, isDrawn);
    if (first == end) return;
    while (!isDrawn(end[-1])) --end;
    box_.x0 = std::min(box_.x0, static_cast<std::uint32_t>(first - pixels));
    box_.x1 = std::max(box_.x1, static_cast<std::uint32_t>(end - pixels));
    box_.y0 = std::min(box_.y0, row_);
    box_.y1 = row_ + 1;
}

void BoundsFinder::take(const std::uint32_t* pixels, std::uint32_t rowCount) {
    for (; rowCount > 0; --rowCount, ++row_, pixels += width_) includeRow(pixels);
}

std::optional<PixelBox> BoundsFinder::box() const {
    if (box_.y1 == 0) return std::nullopt;
    return box_;
}

void Cropper::take(const std::uint32_t* pixels, std::uint32_t rowCount) {
    const std::uint32_t first = std::clamp(box_.y0, row_, row_ + rowCount);
    const std::uint32_t end = std::clamp(box_.y1, row_, row_ + rowCount);
    cropped_.clear();
    for (std::uint32_t y = first; y < end; ++y) {
        const std::uint32_t* row = pixels + std::size_t{y - row_} * width_;
        cropped_.insert(cropped_.end(), row + box_.x0, row + box_.x1);
    }
    row_ += rowCount;
    if (first < end) takeRows_(cropped_.data(), end - first);
}

}  // namespace tool
