#pragma once

#include "base/arena.h"
#include "base/array.h"
#include "svg/id_registry.h"
#include "svg/path_data.h"
#include "svg/rect.h"

namespace quor {

/// The screen that documents are laid out for; belongs to the library, read when needed.
struct ScreenParameters {
    uint32_t width = 0;                          ///< pixels
    uint32_t height = 0;                         ///< pixels
    float dpi = 0.0F;                            ///< pixels per inch
    void (*log)(const char* message) = nullptr;  ///< never null once the library is initialised
};

/// What the nodes of one tree share: the screen, the arena that they live in, the ids, and buffers
/// for reading attributes. Outlives the nodes.
class TreeResources {
public:
    explicit TreeResources(const ScreenParameters& screenParameters) noexcept;

    /// Allocates ids and work buffers. False when memory runs out.
    [[nodiscard]] bool initialize() noexcept;

    /// The node that a reference names: one leading '#' removed, cut at the first ')', white
    /// space and quotes at its end left out. Null when there is none.
    SvgNode* findReference(const char* reference) const noexcept;

    const ScreenParameters& screen;
    Rect initialViewport;  ///< 0, 0, screen width, screen height
    base::Arena arena;     ///< of the nodes and what lives as long as they do
    IdRegistry ids;
    PathData pathData;
    base::Array<float> numbers;
};

}  // namespace quor
