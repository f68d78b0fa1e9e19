#pragma once

#include <tinyxml2.h>

#include "api/draw/document_draw.h"
#include "api/draw/traversal.h"
#include "api/drawing_surface.h"
#include "svg/containers.h"
#include "svg/rect.h"
#include "svg/status.h"
#include "svg/tree_resources.h"
#include "svg/viewport_alignment.h"

namespace quor {

/// A parsed SVG text: the XML document, the node tree that points into it, and where the drawing
/// goes on a surface.
class Document final : public TreeResources {
public:
    /// An empty document, to be loaded. Null when memory runs out.
    static Document* create(const ScreenParameters& screenParameters) noexcept;

    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;
    ~Document();

    /// Replaces the tree by that of the text; a document whose load failed can only be destroyed.
    /// kParser, kInvalidSvg or kOutOfMemory.
    Status load(const char* xmlText) noexcept;

    /// Frees text and tree; the buffers stay for the next load().
    void unload() noexcept;

    /// Whether the buffers are small enough to be kept.
    bool isSmall() const noexcept { return textSize_ <= kSmallText; }

    /// The outermost element's size in pixels; -1, and a warning in the log, when it is missing or
    /// relative.
    float width() const noexcept;
    float height() const noexcept;

    /// Draws on the surface, which is the engine's current one. A viewport without area shows
    /// nothing.
    Status draw(const DrawingSurface& surface, RenderingQuality quality) noexcept;

    SvgSvg& root() const noexcept { return *root_; }
    Traversal& traversal() noexcept { return traversal_; }

    Rect viewport;  ///< the part that is shown, in the document's own units
    ViewportAlignment alignment;

private:
    static constexpr size_t kSmallText = size_t{1} << 15;  ///< bytes

    explicit Document(const ScreenParameters& screenParameters) noexcept
        : TreeResources(screenParameters) {}

    Status parse(const char* xmlText) noexcept;
    Status buildTree() noexcept;
    Rect outermostViewport() const noexcept;

    size_t textSize_ = 0;  ///< bytes
    tinyxml2::XMLDocument xml_;
    SvgSvg* root_ = nullptr;  ///< owned
    Traversal traversal_;
};

}  // namespace quor
