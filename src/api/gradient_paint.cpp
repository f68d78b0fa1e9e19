// The engine paints of gradients.

#include <algorithm>

#include "base/finite.h"
#include "svg/document.h"
#include "svg/engine_error.h"
#include "svg/gradient.h"
#include "svg/shapes.h"

namespace quor {

namespace {

constexpr SvgLength kStart = {0.0F, LengthUnit::kPercent};
constexpr SvgLength kMiddle = {50.0F, LengthUnit::kPercent};
constexpr SvgLength kEnd = {100.0F, LengthUnit::kPercent};

const SvgLength& given(const SvgLength& length, const SvgLength& absent) noexcept {
    return length.unit != LengthUnit::kNone ? length : absent;
}

VGint engineSpread(SpreadMethod method) noexcept {
    switch (method) {
        case SpreadMethod::kReflect:
            return VG_COLOR_RAMP_SPREAD_REFLECT;
        case SpreadMethod::kRepeat:
            return VG_COLOR_RAMP_SPREAD_REPEAT;
        case SpreadMethod::kPad:
            break;
    }
    return VG_COLOR_RAMP_SPREAD_PAD;
}

/// A box without width or height has no coordinates of its own.
bool hasArea(const Box& box) noexcept {
    return box.maxX - box.minX > base::kSmallestExtent &&
           box.maxY - box.minY > base::kSmallestExtent;
}

}  // namespace

Status SvgGradient::buildPaint(Traversal& /*traversal*/, SvgShape& shape, bool forFill,
                               bool& isUsable) noexcept {
    isUsable = false;
    if (const Status status = shape.ensurePath(); status != Status::kOk) return status;
    inheritAttributes();
    if (stopSource_ == nullptr) return Status::kOk;
    if (gradientUnits == GradientUnits::kObjectBoundingBox && !hasArea(shape.pathBounds())) {
        return Status::kOk;
    }
    if (const Status status = createPaint(); status != Status::kOk) return status;
    setPaintMatrix(shape);
    if (const Status status = sendStops(); status != Status::kOk) return status;
    vgSetPaint(paint_, forFill ? VG_FILL_PATH : VG_STROKE_PATH);
    isUsable = true;
    return Status::kOk;
}

/// Makes the engine paint, but for its stops, unless it is there. In both units the numbers that
/// it gets are the same for every shape: the shape's box is in the paint matrix.
Status SvgGradient::createPaint() noexcept {
    if (paint_ != VG_INVALID_HANDLE) return Status::kOk;
    paint_ = vgCreatePaint();
    if (paint_ == VG_INVALID_HANDLE) return takeEngineError();
    vgSetParameteri(paint_, VG_PAINT_COLOR_RAMP_SPREAD_MODE, engineSpread(spreadMethod));
    vgSetParameteri(paint_, VG_PAINT_COLOR_RAMP_PREMULTIPLIED, VG_FALSE);
    sendGeometry();
    const Status status = takeEngineError();
    if (status != Status::kOk) {
        vgDestroyPaint(paint_);
        paint_ = VG_INVALID_HANDLE;
    }
    return status;
}

void SvgGradient::setPaintMatrix(SvgShape& shape) noexcept {
    paintMatrix_ = gradientTransform;
    if (gradientUnits == GradientUnits::kUserSpaceOnUse) return;
    const Box& shapeBounds = shape.pathBounds();
    const float width = base::finite(shapeBounds.maxX - shapeBounds.minX);
    const float height = base::finite(shapeBounds.maxY - shapeBounds.minY);
    paintMatrix_ = SvgMatrix::translation(shapeBounds.minX, shapeBounds.minY) *
                   SvgMatrix::scaling(width, height);
    if (!gradientTransform.isIdentity()) paintMatrix_ = paintMatrix_ * gradientTransform;
}

/// Sends the stops, offsets raised so that none falls, unless the engine has them for good.
Status SvgGradient::sendStops() noexcept {
    if (stopsFinal_) return Status::kOk;
    base::Array<float>& values = document_.numbers;
    values.clear();
    float offset = 0.0F;
    bool areFinal = true;
    for (SvgNode* child : stopSource_->children()) {
        if (child->kind() != SvgNodeKind::kStop) continue;
        auto& stop = static_cast<SvgStop&>(*child);
        const ResolvedColor& resolved = stop.resolvedColor();
        offset = std::max(offset, stop.offset);
        areFinal = areFinal && resolved.isFinal;
        const SvgColor& color = resolved.color;
        for (const float value : {offset, color.red, color.green, color.blue, color.alpha}) {
            values.push(value);
        }
    }
    if (values.failed()) {
        values.clearFailure();
        return Status::kOutOfMemory;
    }
    vgSetParameterfv(paint_, VG_PAINT_COLOR_RAMP_STOPS, values.count(), values.data());
    const Status status = takeEngineError();
    stopsFinal_ = areFinal && status == Status::kOk;
    return status;
}

float SvgGradient::resolve(const SvgLength& length, LengthAxis axis) const noexcept {
    if (gradientUnits == GradientUnits::kUserSpaceOnUse) {
        return resolveLength(length, document_.screen.dpi, &lengthViewport(), axis);
    }
    return base::finite(length.unit == LengthUnit::kPercent ? length.value * 0.01F : length.value);
}

void SvgLinearGradient::sendGeometry() const noexcept {
    vgSetParameteri(paint_, VG_PAINT_TYPE, VG_PAINT_TYPE_LINEAR_GRADIENT);
    const VGfloat points[4] = {resolve(given(x1, kStart), LengthAxis::kHorizontal),
                               resolve(given(y1, kStart), LengthAxis::kVertical),
                               resolve(given(x2, kEnd), LengthAxis::kHorizontal),
                               resolve(given(y2, kStart), LengthAxis::kVertical)};
    if (points[0] == points[2] && points[1] == points[3]) return;
    vgSetParameterfv(paint_, VG_PAINT_LINEAR_GRADIENT, 4, points);
}

void SvgRadialGradient::sendGeometry() const noexcept {
    vgSetParameteri(paint_, VG_PAINT_TYPE, VG_PAINT_TYPE_RADIAL_GRADIENT);
    const SvgLength& centerX = given(cx, kMiddle);
    const SvgLength& centerY = given(cy, kMiddle);
    const VGfloat circle[5] = {resolve(centerX, LengthAxis::kHorizontal),
                               resolve(centerY, LengthAxis::kVertical),
                               resolve(given(fx, centerX), LengthAxis::kHorizontal),
                               resolve(given(fy, centerY), LengthAxis::kVertical),
                               resolve(given(r, kMiddle), LengthAxis::kDiagonal)};
    vgSetParameterfv(paint_, VG_PAINT_RADIAL_GRADIENT, 5, circle);
}

}  // namespace quor
