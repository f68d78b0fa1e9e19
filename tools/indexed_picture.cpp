#include "indexed_picture.h"

#include <array>

namespace tool {

namespace {

/// Finds colours by hashing; open addressing, at most a quarter full.
class ColorTable {
public:
    static constexpr std::size_t kMostColors = 256;

    /// The colour's index, given to it when it is new; negative when the table is full.
    int indexOf(std::uint32_t color) {
        std::size_t slot = (color * 0x9E3779B1u) >> 22;  // Fibonacci hashing to 10 bits
        while (slots_[slot] != 0) {
            const std::size_t index = slots_[slot] - std::size_t{1};
            if (colors_[index] == color) return static_cast<int>(index);
            slot = (slot + 1) % slots_.size();
        }
        if (colors_.size() == kMostColors) return -1;
        colors_.push_back(color);
        slots_[slot] = static_cast<std::uint16_t>(colors_.size());
        return static_cast<int>(colors_.size()) - 1;
    }

    std::vector<std::uint32_t>&& takeColors() { return std::move(colors_); }

private:
    std::array<std::uint16_t, 1024> slots_{};  ///< index + 1; 0 is free
    std::vector<std::uint32_t> colors_;
};

}  // namespace

std::optional<IndexedPicture> indexColors(const std::uint32_t* pixels, std::size_t count) {
    ColorTable table;
    std::vector<unsigned char> indices(count);
    std::size_t i = 0;
    while (i < count) {
        const std::uint32_t color = pixels[i];
        const int index = table.indexOf(color);
        if (index < 0) return std::nullopt;
        // Most pixels are as the one before.
        do indices[i++] = static_cast<unsigned char>(index);
        while (i < count && pixels[i] == color);
    }
    return IndexedPicture{table.takeColors(), std::move(indices)};
}

}  // namespace tool
