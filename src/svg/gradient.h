#pragma once

#include "svg/length.h"
#include "svg/paint_server.h"

namespace quor {

enum class GradientUnits : uint8_t { kUserSpaceOnUse = 0, kObjectBoundingBox = 1 };
enum class SpreadMethod : uint8_t { kPad = 0, kReflect = 1, kRepeat = 2 };

/// What linear and radial gradients have in common.
///
/// Attributes that a gradient lacks come from the nearest gradient of its chain of references that
/// has them, geometry only from one of its own kind, and its stops from the nearest one with stops.
class SvgGradient : public SvgPaintServer {
public:
    using SvgPaintServer::SvgPaintServer;
    Status parseAttributes(const AttributeTable& attributes) noexcept override;

    GradientUnits gradientUnits = GradientUnits::kObjectBoundingBox;
    SpreadMethod spreadMethod = SpreadMethod::kPad;
    SvgMatrix gradientTransform;
    /// Which of the three above the element has, itself or by inheritance; an unreadable keyword
    /// does not count.
    bool hasUnits = false;
    bool hasSpreadMethod = false;
    bool hasTransform = false;
    const char* href = nullptr;  ///< raw `xlink:href` text, or null
    bool areStopsFinal = false;  ///< the engine paint has the stops, and they will not change

    /// Takes over what the element lacks from the gradients that it refers to, once. A circle of
    /// references ends where it began.
    void inheritAttributes() noexcept;

    /// The gradient whose stops are used; null when there is none. Valid after inheritAttributes().
    const SvgGradient* stopSource() const noexcept { return stopSource_; }

protected:
    /// Reads the geometry attributes of the kind.
    virtual void parseGeometry(const AttributeTable& attributes) noexcept = 0;

    /// Takes over the absent lengths from a gradient of the same kind.
    virtual void inheritGeometry(const SvgGradient& other) noexcept = 0;

private:
    SvgGradient* referenced() noexcept;
    /// From the gradient that it refers to, which holds what that one inherited.
    void inheritFrom(const SvgGradient& other) noexcept;
    bool hasStops() const noexcept;

    SvgGradient* referenced_ = nullptr;
    bool isReferenceResolved_ = false;
    bool isInherited_ = false;                ///< or being so
    SvgGradient* referrer_ = nullptr;         ///< in the chain on which it was met first
    const SvgGradient* otherKind_ = nullptr;  ///< the nearest of its chain that is not of its kind
    const SvgGradient* stopSource_ = nullptr;
};

class SvgLinearGradient final : public SvgGradient {
public:
    using SvgGradient::SvgGradient;
    SvgLength x1, y1, x2, y2;  ///< unit kNone: absent

protected:
    void parseGeometry(const AttributeTable& attributes) noexcept override;
    void inheritGeometry(const SvgGradient& other) noexcept override;
};

class SvgRadialGradient final : public SvgGradient {
public:
    using SvgGradient::SvgGradient;
    SvgLength cx, cy, fx, fy, r;  ///< unit kNone: absent

protected:
    void parseGeometry(const AttributeTable& attributes) noexcept override;
    void inheritGeometry(const SvgGradient& other) noexcept override;
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
