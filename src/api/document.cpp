// Loads a text: XML, then the element tree, then the viewport that the outermost element asks for.

#include "api/document.h"

#include <cstring>
#include <memory>
#include <new>

#include "svg/length.h"
#include "svg/node_factory.h"

namespace quor {

namespace {

/// A size attribute of the outermost element, and the warnings for one that gives no pixels.
struct SizeAttribute {
    AttributeId attribute;
    LengthAxis axis;
    const char* missing;
    const char* relative;
};

constexpr SizeAttribute kWidth = {
    AttributeId::kWidth, LengthAxis::kHorizontal,
    "Outermost <svg> element doesn't have a 'width' attribute",
    "Outermost <svg> element has a 'width' attribute specified in relative coordinates units"};
constexpr SizeAttribute kHeight = {
    AttributeId::kHeight, LengthAxis::kVertical,
    "Outermost <svg> element doesn't have an 'height' attribute",
    "Outermost <svg> element has an 'height' attribute specified in relative coordinates units"};

float pixelsOf(const Document& document, const SizeAttribute& size) noexcept {
    const char* text = document.root().attribute(size.attribute);
    const SvgLength length = text != nullptr ? parseLength(text) : SvgLength{};
    if (text == nullptr || length.isRelative()) {
        document.screen.log(text == nullptr ? size.missing : size.relative);
        return -1.0F;
    }
    return resolveLength(length, document.screen.dpi, &document.initialViewport, size.axis);
}

}  // namespace

Document* Document::create(const ScreenParameters& screenParameters) noexcept {
    std::unique_ptr<Document> document(new (std::nothrow) Document(screenParameters));
    if (document == nullptr || !document->initialize() || !document->traversal_.initialize()) {
        return nullptr;
    }
    return document.release();
}

Document::~Document() { delete root_; }

void Document::unload() noexcept {
    // The tree points into the text.
    delete root_;
    root_ = nullptr;
    ids.clear();
    arena.clear();
    xml_.Clear();
}

Status Document::load(const char* xmlText) noexcept {
    unload();
    if (const Status status = parse(xmlText); status != Status::kOk) return status;
    if (const Status status = buildTree(); status != Status::kOk) return status;
    viewport = outermostViewport();
    alignment = root_->alignment;
    return Status::kOk;
}

Status Document::parse(const char* xmlText) noexcept {
    try {
        textSize_ = std::strlen(xmlText);
        return xml_.Parse(xmlText, textSize_) == tinyxml2::XML_SUCCESS ? Status::kOk
                                                                       : Status::kParser;
    } catch (const std::bad_alloc&) {
        return Status::kOutOfMemory;
    }
}

Status Document::buildTree() noexcept {
    tinyxml2::XMLElement* element = xml_.FirstChildElement();
    if (element == nullptr) return Status::kInvalidSvg;
    SvgNode* node = nullptr;
    if (const Status status = buildNode(*this, *element, node); status != Status::kOk) {
        return status;
    }
    if (node == nullptr || node->kind() != SvgNodeKind::kSvg) {
        delete node;
        return Status::kInvalidSvg;
    }
    root_ = static_cast<SvgSvg*>(node);
    return Status::kOk;
}

Rect Document::outermostViewport() const noexcept {
    if (const Rect* own = root_->viewport()) return *own;
    const float shownWidth =
        root_->hasWidth
            ? resolveLength(root_->width, screen.dpi, &initialViewport, LengthAxis::kHorizontal)
            : initialViewport.width;
    const float shownHeight =
        root_->hasHeight
            ? resolveLength(root_->height, screen.dpi, &initialViewport, LengthAxis::kVertical)
            : initialViewport.height;
    Rect shown;
    shown.set(0.0F, 0.0F, shownWidth, shownHeight);
    return shown;
}

Status Document::draw(const DrawingSurface& surface, RenderingQuality quality) noexcept {
    if (viewport.isDegenerate()) return Status::kOk;
    root_->setOutermostMapping(viewportMapping(viewport, surface.viewport, alignment));
    const SvgMatrix base = surfaceFlip(surface.height()) * surface.transformMatrix();
    return drawDocument(*root_, traversal_, base, quality);
}

float Document::width() const noexcept { return pixelsOf(*this, kWidth); }

float Document::height() const noexcept { return pixelsOf(*this, kHeight); }

}  // namespace quor
