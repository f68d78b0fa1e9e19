#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tool {

/// An element that exceeds the sheets.
struct TooLargeElement {
    std::string id;       ///< empty when it has none
    std::uint32_t index;  ///< from 0 among the document's elements
    double longerSide;    ///< pixels, roughly
};

/// The `count` elements of the document that a packing at `scale` left out. The library only counts
/// them, so this packs the document by itself, as small as all of it fits: the last packing is
/// lost.
std::vector<TooLargeElement> findTooLarge(std::uint32_t document, bool explodesGroups, float scale,
                                          std::uint32_t count);

}  // namespace tool
