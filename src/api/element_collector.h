#pragma once

#include <cstdint>

#include "api/document.h"
#include "base/array.h"

namespace quor {

/// An element to pack, and the box of the pixels that it paints in the scaled document.
struct PackingElement {
    Document* document;  ///< null once the document is destroyed
    SvgNode* node;
    uint32_t handle;  ///< of the document, as the caller gave it
    float scale;      ///< document units to pixels
    int32_t originX, originY;
    int32_t width, height;
};

/// What a collection is asked for.
struct CollectionRequest {
    uint32_t handle;
    float scale;  ///< positive and finite
    bool opensGroups;
    int32_t largestSide;  ///< pixels; larger elements are left out
};

struct CollectionCounts {
    uint32_t taken = 0;
    uint32_t tooLarge = 0;
};

/// Appends the document's elements that paint something, in document order: the children of the
/// outermost element, or all shapes and `use` elements when containers are opened. On failure
/// nothing is appended. The engine has to be current on some surface.
Status collectElements(Document& document, const CollectionRequest& request,
                       base::Array<PackingElement>& elements, CollectionCounts& counts) noexcept;

}  // namespace quor
