#include "svg/tree_resources.h"

#include <cstring>

#include "svg/text_cursor.h"

namespace quor {

namespace {

// Enough for most outlines, so that the first paths of a document do not grow the buffers.
constexpr int kInitialSegments = 128;
constexpr int kInitialCoordinates = 256;

}  // namespace

TreeResources::TreeResources(const ScreenParameters& screenParameters) noexcept
    : screen(screenParameters) {
    initialViewport.set(0.0F, 0.0F, static_cast<float>(screen.width),
                        static_cast<float>(screen.height));
}

bool TreeResources::initialize() noexcept {
    return ids.initialize() && pathData.segments.reserve(kInitialSegments) &&
           pathData.coordinates.reserve(kInitialCoordinates);
}

SvgNode* TreeResources::findReference(const char* reference) const noexcept {
    if (*reference == '#') ++reference;
    size_t length = std::strcspn(reference, ")");
    const auto endsTheName = [](char c) { return isSvgSpace(c) || c == '\'' || c == '"'; };
    while (length > 0 && endsTheName(reference[length - 1])) --length;
    return ids.find(reference, length);
}

}  // namespace quor
