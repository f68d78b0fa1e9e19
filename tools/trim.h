#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "region.h"

namespace tool {

/// Finds the part of a picture that is not of one colour, from its rows.
class BoundsFinder {
public:
    BoundsFinder(std::uint32_t width, std::uint32_t background)
        : width_(width), background_(background) {}

    void take(const std::uint32_t* pixels, std::uint32_t rowCount);

    /// Nothing when all pixels so far are of the background.
    std::optional<PixelBox> box() const;

private:
    void includeRow(const std::uint32_t* pixels);

    std::uint32_t width_;
    std::uint32_t background_;
    std::uint32_t row_ = 0;
    PixelBox box_{UINT32_MAX, UINT32_MAX, 0, 0};
};

/// Hands on the part of rows that lies in a box.
class Cropper {
public:
    using TakeRows = std::function<void(const std::uint32_t* pixels, std::uint32_t rowCount)>;

    Cropper(std::uint32_t width, const PixelBox& box, TakeRows takeRows)
        : width_(width), box_(box), takeRows_(std::move(takeRows)) {}

    void take(const std::uint32_t* pixels, std::uint32_t rowCount);

private:
    std::uint32_t width_;
    PixelBox box_;
    TakeRows takeRows_;
    std::uint32_t row_ = 0;
    std::vector<std::uint32_t> cropped_;
};

}  // namespace tool
