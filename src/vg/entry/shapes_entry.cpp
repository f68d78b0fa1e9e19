// The shapes of the OpenVG 1.1 utility library, with its start points, directions and sequences of
// segments: they decide where dashes begin. Coordinates are absolute, so that closed shapes end
// exactly where they began.

#include "vg/vgu.h"

#include <algorithm>
#include <cmath>

#include "base/finite.h"
#include "vg/context.h"
#include "vg/entry/path_checks.h"
#include "vg/geometry/trigonometry.h"
#include "vg/path/path_writer.h"

namespace vg {

namespace {

/// Finds the path, checks the arguments and lets draw(writer) append the shape, in whole or not at
/// all. The context's own error stays as it is.
template <class Draw>
VGUErrorCode appendShape(VGPath handle, bool areArgumentsLegal, const Draw& draw) noexcept {
    Context* context = currentContext();
    if (context == nullptr) return VGU_NO_CONTEXT_ERROR;
    Path* path = context->findPath(handle);
    if (path == nullptr) return VGU_BAD_HANDLE_ERROR;
    if ((path->capabilities & VG_PATH_CAPABILITY_APPEND_TO) == 0) return VGU_PATH_CAPABILITY_ERROR;
    if (!areArgumentsLegal) return VGU_ILLEGAL_ARGUMENT_ERROR;
    const auto append = [&] {
        PathWriter writer(*path);
        if (!draw(writer)) return false;
        writer.commit();
        return true;
    };
    return doTwice(*context, append) ? VGU_NO_ERROR : VGU_OUT_OF_MEMORY_ERROR;
}

/// A float argument, without infinities and NaN.
double argument(VGfloat value) noexcept { return static_cast<double>(base::finite(value)); }

/// False for NaN, too.
bool isPositive(VGfloat width, VGfloat height) noexcept { return width > 0.0F && height > 0.0F; }

/// Whole turns beyond a few change neither rule of filling when they go away in pairs.
double boundedExtent(double degrees) noexcept {
    constexpr double kTwoTurns = 720.0;
    constexpr double kMost = 4 * kTwoTurns;
    if (std::fabs(degrees) <= kMost) return degrees;
    return std::fmod(degrees, kTwoTurns) + std::copysign(kMost - kTwoTurns, degrees);
}

/// The ellipse that vguArc() cuts its arc from.
struct ArcShape {
    Vector2 center;
    double radiusX, radiusY;

    /// From the centre to the point at that angle.
    Vector2 offsetAt(double degrees) const noexcept {
        const SinCos angle = sinCosOfDegrees(degrees);
        return {radiusX * angle.cos, radiusY * angle.sin};
    }

    /// Half turns while more than one is left, then the rest.
    bool append(PathWriter& writer, double start, double extent) const noexcept {
        const VGubyte code = extent < 0.0 ? VG_SCWARC_TO : VG_SCCWARC_TO;
        const auto arcTo = [&](Vector2 offset) {
            const Vector2 to = center + offset;
            return writer.append(code, {radiusX, radiusY, 0.0, to.x, to.y});
        };
        Vector2 offset = offsetAt(start);
        for (double left = std::fabs(extent); left > 180.0; left -= 180.0) {
            offset = offset * -1.0;  // exactly opposite
            if (!arcTo(offset)) return false;
        }
        return arcTo(offsetAt(start + extent));
    }
};

bool appendArcEnd(PathWriter& writer, VGint arcType, Vector2 center) noexcept {
    if (arcType == VGU_ARC_OPEN) return true;
    if (arcType == VGU_ARC_PIE && !writer.append(VG_LINE_TO, center)) return false;
    return writer.append(VG_CLOSE_PATH, {});
}

}  // namespace

}  // namespace vg

using vg::argument;
using vg::PathWriter;
using vg::Vector2;

VGUErrorCode vguLine(VGPath path, VGfloat x0, VGfloat y0, VGfloat x1, VGfloat y1) {
    return vg::appendShape(path, true, [&](PathWriter& writer) {
        return writer.append(VG_MOVE_TO, {argument(x0), argument(y0)}) &&
               writer.append(VG_LINE_TO, {argument(x1), argument(y1)});
    });
}

VGUErrorCode vguPolygon(VGPath path, const VGfloat* points, VGint count, VGboolean closed) {
    const bool isLegal = count > 0 && vg::isUsableArray(points, alignof(VGfloat));
    return vg::appendShape(path, isLegal, [&](PathWriter& writer) {
        const VGfloat* point = points;
        for (VGint i = 0; i < count; ++i, point += 2) {
            const VGubyte code = i == 0 ? VG_MOVE_TO : VG_LINE_TO;
            if (!writer.append(code, {argument(point[0]), argument(point[1])})) return false;
        }
        return closed == VG_FALSE || writer.append(VG_CLOSE_PATH, {});
    });
}

VGUErrorCode vguRect(VGPath path, VGfloat x, VGfloat y, VGfloat width, VGfloat height) {
    return vg::appendShape(path, vg::isPositive(width, height), [&](PathWriter& writer) {
        const double left = argument(x);
        const double low = argument(y);
        return writer.append(VG_MOVE_TO, {left, low}) &&
               writer.append(VG_HLINE_TO, {left + argument(width)}) &&
               writer.append(VG_VLINE_TO, {low + argument(height)}) &&
               writer.append(VG_HLINE_TO, {left}) && writer.append(VG_CLOSE_PATH, {});
    });
}

VGUErrorCode vguRoundRect(VGPath path, VGfloat x, VGfloat y, VGfloat width, VGfloat height,
                          VGfloat arcWidth, VGfloat arcHeight) {
    return vg::appendShape(path, vg::isPositive(width, height), [&](PathWriter& writer) {
        const double radiusX = std::clamp(argument(arcWidth), 0.0, argument(width)) / 2;
        const double radiusY = std::clamp(argument(arcHeight), 0.0, argument(height)) / 2;
        const double left = argument(x);
        const double low = argument(y);
        const double right = left + argument(width);
        const double high = low + argument(height);
        const auto corner = [&](double endX, double endY) {
            return writer.append(VG_SCCWARC_TO, {radiusX, radiusY, 0.0, endX, endY});
        };
        return writer.append(VG_MOVE_TO, {left + radiusX, low}) &&
               writer.append(VG_HLINE_TO, {right - radiusX}) && corner(right, low + radiusY) &&
               writer.append(VG_VLINE_TO, {high - radiusY}) && corner(right - radiusX, high) &&
               writer.append(VG_HLINE_TO, {left + radiusX}) && corner(left, high - radiusY) &&
               writer.append(VG_VLINE_TO, {low + radiusY}) && corner(left + radiusX, low) &&
               writer.append(VG_CLOSE_PATH, {});
    });
}

VGUErrorCode vguEllipse(VGPath path, VGfloat cx, VGfloat cy, VGfloat width, VGfloat height) {
    return vg::appendShape(path, vg::isPositive(width, height), [&](PathWriter& writer) {
        const Vector2 center{argument(cx), argument(cy)};
        const double radiusX = argument(width) / 2;
        const double radiusY = argument(height) / 2;
        const auto half = [&](double endX) {
            return writer.append(VG_SCCWARC_TO, {radiusX, radiusY, 0.0, endX, center.y});
        };
        return writer.append(VG_MOVE_TO, {center.x + radiusX, center.y}) &&
               half(center.x - radiusX) && half(center.x + radiusX) &&
               writer.append(VG_CLOSE_PATH, {});
    });
}

VGUErrorCode vguArc(VGPath path, VGfloat x, VGfloat y, VGfloat width, VGfloat height,
                    VGfloat startAngle, VGfloat angleExtent, VGint arcType) {
    const bool isLegal =
        vg::isPositive(width, height) && arcType >= VGU_ARC_OPEN && arcType <= VGU_ARC_PIE;
    return vg::appendShape(path, isLegal, [&](PathWriter& writer) {
        const vg::ArcShape shape{
            {argument(x), argument(y)}, argument(width) / 2, argument(height) / 2};
        const double start = argument(startAngle);
        return writer.append(VG_MOVE_TO, shape.center + shape.offsetAt(start)) &&
               shape.append(writer, start, vg::boundedExtent(argument(angleExtent))) &&
               vg::appendArcEnd(writer, arcType, shape.center);
    });
}
