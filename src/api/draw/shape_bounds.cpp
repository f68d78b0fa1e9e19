// Boxes of shapes: the outline's from the engine, grown by an upper bound of the stroke's reach.

#include "api/draw/shape_bounds.h"

#include "api/draw/non_scaling_stroke.h"
#include "base/finite.h"
#include "svg/engine_error.h"

namespace quor {

namespace {

constexpr float kSquareRootOfTwo = 1.4142135F;

/// How far a stroke of the style can reach from its outline, in units of the width. Deliberately
/// conservative: caps and joins are not looked at one by one.
float strokeExtent(const SvgStyle& style, float width) noexcept {
    float extent = width * 0.5F;
    if (style.strokeLineJoin == SvgLineJoin::kMiter) extent *= style.strokeMiterLimit;
    if (style.strokeLineCap == SvgLineCap::kSquare) extent *= kSquareRootOfTwo;
    return extent;
}

Box finiteBox(float minX, float minY, float maxX, float maxY) noexcept {
    return {base::finite(minX), base::finite(minY), base::finite(maxX), base::finite(maxY)};
}

Box grown(const Box& box, float extent) noexcept {
    return finiteBox(box.minX - extent, box.minY - extent, box.maxX + extent, box.maxY + extent);
}

/// The box of the four mapped corners.
Box mapped(const Box& box, const SvgMatrix& matrix) noexcept {
    Box result;
    for (const float x : {box.minX, box.maxX}) {
        for (const float y : {box.minY, box.maxY}) {
            float mappedX = 0.0F;
            float mappedY = 0.0F;
            matrix.apply(x, y, mappedX, mappedY);
            result.unite(finiteBox(mappedX, mappedY, mappedX, mappedY));
        }
    }
    return result;
}

/// The box that one of the engine's two bounds queries gives; empty for a path without segments.
Status queryBounds(decltype(vgPathBounds)& query, VGPath path, Box& box) noexcept {
    VGfloat x = 0.0F;
    VGfloat y = 0.0F;
    VGfloat width = 0.0F;
    VGfloat height = 0.0F;
    query(path, &x, &y, &width, &height);
    box = finiteBox(x, y, x + width, y + height);
    return takeEngineError();
}

/// The box of a stroke that is made on the surface.
Status surfaceStrokeBounds(SvgShape& shape, const SvgMatrix& transform, float extent,
                           Box& box) noexcept {
    VGPath surfacePath = VG_INVALID_HANDLE;
    Status status = shape.findSurfacePath(transform, surfacePath);
    if (status != Status::kOk) return status;
    status = queryBounds(vgPathBounds, surfacePath, box);
    box = grown(box, extent);
    return status;
}

}  // namespace

Status shapeBounds(SvgShape& shape, const Traversal& traversal, Box& box) noexcept {
    box = {};
    if (const Status status = shape.ensurePath(); status != Status::kOk) return status;
    if (shape.pathBounds().isEmpty()) return Status::kOk;

    const SvgStyle& style = traversal.style();
    const SvgMatrix& transform = traversal.transform();
    if (style.stroke.type == PaintType::kNone || !(style.strokeWidth > 0.0F)) {
        return queryBounds(vgPathTransformedBounds, shape.path(), box);
    }
    float width = style.strokeWidth;
    if (style.vectorEffect == SvgVectorEffect::kNonScalingStroke) {
        if (!transform.isAnglePreserving()) {
            return surfaceStrokeBounds(shape, transform, strokeExtent(style, width), box);
        }
        const float scale = lengthScale(transform);
        if (!(scale > base::kSmallestExtent))
            return queryBounds(vgPathTransformedBounds, shape.path(), box);
        width /= scale;
    }
    box = mapped(grown(shape.pathBounds(), strokeExtent(style, width)), transform);
    return Status::kOk;
}

}  // namespace quor
