#pragma once

#include "api/draw/traversal.h"
#include "api/element_collector.h"
#include "base/array.h"
#include "svg/matrix.h"
#include "svg/status.h"

namespace quor {

/// Draws single elements of documents with the style and the transforms of their ancestors, all of
/// them within the limits of one walk.
class ElementDraw {
public:
    /// Draws on the engine's current surface, of `surfaceHeight` pixels, with the top left corner
    /// of the element's box at (x, y), y downward: whole pixels from its document, so that nothing
    /// is resampled. Precondition: the draw state is set.
    Status draw(const PackingElement& element, int32_t x, int32_t y,
                uint32_t surfaceHeight) noexcept;

private:
    bool listPath(SvgNode& element) noexcept;
    Status drawFrom(int level) noexcept;

    Traversal* traversal_ = nullptr;
    int useTargets_ = 0;
    base::Array<SvgNode*> path_;  ///< from the element out to the outermost one
};

}  // namespace quor
