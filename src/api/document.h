#pragma once

#include <tinyxml2.h>

#include "api/drawing_surface.h"
#include "api/traversal.h"
#include "svg/containers.h"
#include "svg/document.h"
#include "svg/rect.h"
#include "svg/status.h"
#include "svg/viewport_alignment.h"

namespace quor {

/// The order of the exported quality values.
enum class RenderingQuality : uint32_t { kNonAntialiased = 0, kFaster = 1, kBetter = 2 };

/// A parsed SVG text: the XML document, the node tree that points into it, and where the drawing
/// goes on a surface.
class Document final : public SvgDocument {
public:
    /// Null when the text is no SVG document or memory runs out.
    static Document* create(const ScreenParameters& screenParameters, const char* xmlText) noexcept;

    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;
    ~Document();

    /// Replaces the tree by that of the text; a document whose load failed can only be destroyed.
    /// kParser, kInvalidSvg or kOutOfMemory.
    Status load(const char* xmlText) noexcept;

    /// The outermost element's size in pixels; -1 when it is missing or relative, which the log
    /// hears of.
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
    explicit Document(const ScreenParameters& screenParameters) noexcept
        : SvgDocument(screenParameters) {}

    Status parse(const char* xmlText) noexcept;
    Status buildTree() noexcept;
    Rect outermostViewport() const noexcept;

    tinyxml2::XMLDocument xml_;
    SvgSvg* root_ = nullptr;  ///< owned
    Traversal traversal_;
};

}  // namespace quor
