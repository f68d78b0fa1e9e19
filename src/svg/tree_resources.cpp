#include "svg/tree_resources.h"

#include <cstring>

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
    return ids.find(reference, std::strcspn(reference, ")"));
}

}  // namespace quor
