#pragma once

#include "svg/length.h"
#include "svg/paint_server.h"

namespace quor {

enum class GradientUnits : uint8_t { kUserSpaceOnUse = 0, kObjectBoundingBox = 1 };
enum class SpreadMethod : uint8_t { kPad = 0, kReflect = 1, kRepeat = 2 };

/// What linear and radial gradients have in common.
class SvgGradient : public SvgPaintServer {
public:
    using SvgPaintServer::SvgPaintServer;
    Status parseAttributes(const AttributeTable& attributes) noexcept override;

    GradientUnits gradientUnits = GradientUnits::kObjectBoundingBox;
    SpreadMethod spreadMethod = SpreadMethod::kPad;
    SvgMatrix gradientTransform;
    /// Which of the three above the element has itself; an unreadable keyword does not count.
    bool hasUnits = false;
    bool hasSpreadMethod = false;
    bool hasTransform = false;
    const char* href = nullptr;  ///< raw `xlink:href` text, or null

protected:
    /// Reads the geometry attributes of the kind.
    virtual void parseGeometry(const AttributeTable& attributes) noexcept = 0;
};

class SvgLinearGradient final : public SvgGradient {
public:
    using SvgGradient::SvgGradient;
    SvgLength x1, y1, x2, y2;  ///< unit kNone: absent

protected:
    void parseGeometry(const AttributeTable& attributes) noexcept override;
};

class SvgRadialGradient final : public SvgGradient {
public:
    using SvgGradient::SvgGradient;
    SvgLength cx, cy, fx, fy, r;  ///< unit kNone: absent

protected:
    void parseGeometry(const AttributeTable& attributes) noexcept override;
};

/// A colour with an opacity that a node resolves from a pair of properties, once if they do not
/// depend on other elements.
struct ResolvedColor {
    SvgColor color{0.0F, 0.0F, 0.0F, 1.0F};  ///< alpha is the opacity
    bool isFinal = false;                    ///< neither value came from another element
};

class SvgStop final : public SvgNode {
public:
    using SvgNode::SvgNode;
    Status parseAttributes(const AttributeTable& attributes) noexcept override;

    /// `stop-color` with `stop-opacity` as alpha, clamped to 0..1.
    const ResolvedColor& resolvedColor() noexcept;

    float offset = 0.0F;  ///< 0..1

private:
    ResolvedColor resolved_;
};

/// `solidColor`: resolves `solid-color` and `solid-opacity` as a stop does its own.
class SvgSolidColor final : public SvgPaintServer {
public:
    using SvgPaintServer::SvgPaintServer;
    const ResolvedColor& resolvedColor() noexcept;

private:
    ResolvedColor resolved_;
};

}  // namespace quor
