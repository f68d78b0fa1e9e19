// Turns a gradient element into an engine paint. The engine gets type, geometry and colour ramp
// once, in the gradient's own units; what differs from shape to shape is only the paint matrix,
// which holds the shape's box.

#include "api/draw/gradient_paint.h"

#include <algorithm>
#include <cassert>

#include "base/finite.h"
#include "svg/engine_error.h"
#include "svg/tree_resources.h"

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

/// A geometry attribute in the gradient's units: user units, or parts of the shape's box.
float resolve(const SvgGradient& gradient, const SvgLength& length, LengthAxis axis) noexcept {
    if (gradient.gradientUnits == GradientUnits::kUserSpaceOnUse) {
        return resolveLength(length, gradient.resources().screen.dpi, &gradient.lengthViewport(),
                             axis);
    }
    return base::finite(length.unit == LengthUnit::kPercent ? length.value * 0.01F : length.value);
}

/// Points that coincide are not sent: the engine keeps its own.
void sendGeometry(const SvgLinearGradient& gradient) noexcept {
    const VGPaint paint = gradient.enginePaint;
    vgSetParameteri(paint, VG_PAINT_TYPE, VG_PAINT_TYPE_LINEAR_GRADIENT);
    const VGfloat points[4] = {
        resolve(gradient, given(gradient.x1, kStart), LengthAxis::kHorizontal),
        resolve(gradient, given(gradient.y1, kStart), LengthAxis::kVertical),
        resolve(gradient, given(gradient.x2, kEnd), LengthAxis::kHorizontal),
        resolve(gradient, given(gradient.y2, kStart), LengthAxis::kVertical)};
    if (points[0] == points[2] && points[1] == points[3]) return;
    vgSetParameterfv(paint, VG_PAINT_LINEAR_GRADIENT, 4, points);
}

void sendGeometry(const SvgRadialGradient& gradient) noexcept {
    const VGPaint paint = gradient.enginePaint;
    vgSetParameteri(paint, VG_PAINT_TYPE, VG_PAINT_TYPE_RADIAL_GRADIENT);
    const SvgLength& centerX = given(gradient.cx, kMiddle);
    const SvgLength& centerY = given(gradient.cy, kMiddle);
    const VGfloat circle[5] = {
        resolve(gradient, centerX, LengthAxis::kHorizontal),
        resolve(gradient, centerY, LengthAxis::kVertical),
        resolve(gradient, given(gradient.fx, centerX), LengthAxis::kHorizontal),
        resolve(gradient, given(gradient.fy, centerY), LengthAxis::kVertical),
        resolve(gradient, given(gradient.r, kMiddle), LengthAxis::kDiagonal)};
    vgSetParameterfv(paint, VG_PAINT_RADIAL_GRADIENT, 5, circle);
}

/// Makes the engine paint, but for its stops, unless it is there.
Status ensureEnginePaint(SvgGradient& gradient) noexcept {
    VGPaint& paint = gradient.enginePaint;
    if (paint != VG_INVALID_HANDLE) return Status::kOk;
    paint = vgCreatePaint();
    if (paint == VG_INVALID_HANDLE) return takeEngineError();
    vgSetParameteri(paint, VG_PAINT_COLOR_RAMP_SPREAD_MODE, engineSpread(gradient.spreadMethod));
    vgSetParameteri(paint, VG_PAINT_COLOR_RAMP_PREMULTIPLIED, VG_FALSE);
    if (gradient.kind() == SvgNodeKind::kLinearGradient) {
        sendGeometry(static_cast<const SvgLinearGradient&>(gradient));
    } else {
        sendGeometry(static_cast<const SvgRadialGradient&>(gradient));
    }
    const Status status = takeEngineError();
    if (status != Status::kOk) {
        vgDestroyPaint(paint);
        paint = VG_INVALID_HANDLE;
    }
    return status;
}

SvgMatrix paintToUser(const SvgGradient& gradient, SvgShape& shape) noexcept {
    const SvgMatrix& own = gradient.gradientTransform;
    if (gradient.gradientUnits == GradientUnits::kUserSpaceOnUse) return own;
    const Box& box = shape.pathBounds();
    const SvgMatrix boxToUser =
        SvgMatrix::translation(box.minX, box.minY) *
        SvgMatrix::scaling(base::finite(box.maxX - box.minX), base::finite(box.maxY - box.minY));
    return own.isIdentity() ? boxToUser : boxToUser * own;
}

/// Sends the stops, offsets raised so that none falls, unless the engine has them for good.
Status sendStops(SvgGradient& gradient) noexcept {
    if (gradient.areStopsFinal) return Status::kOk;
    base::Array<float>& values = gradient.resources().numbers;
    values.clear();
    float offset = 0.0F;
    bool areFinal = true;
    for (SvgNode* child : gradient.stopSource()->children()) {
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
    vgSetParameterfv(gradient.enginePaint, VG_PAINT_COLOR_RAMP_STOPS, values.count(),
                     values.data());
    const Status status = takeEngineError();
    gradient.areStopsFinal = areFinal && status == Status::kOk;
    return status;
}

}  // namespace

Status prepareGradientPaint(SvgGradient& gradient, SvgShape& shape, EnginePaint& paint) noexcept {
    assert(paint.handle == VG_INVALID_HANDLE);
    if (const Status status = shape.ensurePath(); status != Status::kOk) return status;
    gradient.inheritAttributes();
    if (gradient.stopSource() == nullptr) return Status::kOk;
    const bool isInBoxUnits = gradient.gradientUnits == GradientUnits::kObjectBoundingBox;
    if (isInBoxUnits && !hasArea(shape.pathBounds())) return Status::kOk;
    if (const Status status = ensureEnginePaint(gradient); status != Status::kOk) return status;
    if (const Status status = sendStops(gradient); status != Status::kOk) return status;
    paint = {gradient.enginePaint, paintToUser(gradient, shape)};
    return Status::kOk;
}

}  // namespace quor
