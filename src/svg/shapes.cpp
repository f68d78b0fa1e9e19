// Builds the engine path of each shape from its attributes when it is first needed.

#include "svg/shapes.h"

#include "base/finite.h"
#include "svg/engine_error.h"
#include "svg/number.h"
#include "svg/path_data.h"
#include "svg/point_list.h"
#include "svg/tree_resources.h"
#include "vg/vgu.h"

namespace quor {

namespace {

/// An outline is complete once it is built: nothing writes to it any more.
constexpr VGbitfield kWriteCapabilities = VG_PATH_CAPABILITY_APPEND_TO | VG_PATH_CAPABILITY_MODIFY |
                                          VG_PATH_CAPABILITY_TRANSFORM_TO |
                                          VG_PATH_CAPABILITY_INTERPOLATE_TO;

/// Sizes that the engine refuses leave the path empty; only lack of memory is a failure.
Status statusOfUtility(VGUErrorCode code) noexcept {
    return code == VGU_OUT_OF_MEMORY_ERROR ? Status::kOutOfMemory : takeEngineError();
}

Status createPath(VGPath& path) noexcept {
    path = vgCreatePath(VG_PATH_FORMAT_STANDARD, VG_PATH_DATATYPE_F, 1.0F, 0.0F, 0, 0,
                        VG_PATH_CAPABILITY_ALL);
    const Status status = takeEngineError();
    return status == Status::kOk && path == VG_INVALID_HANDLE ? Status::kOutOfMemory : status;
}

/// Points without a pair leave the path empty.
Status appendPoints(TreeResources& resources, const char* text, VGPath path,
                    VGboolean isClosed) noexcept {
    if (text == nullptr) return Status::kOk;
    base::Array<float>& numbers = resources.numbers;
    const Status status = parsePointList(text, numbers);
    const int pairs = numbers.count() / 2;
    if (status != Status::kOk || pairs == 0) return status;
    return statusOfUtility(vguPolygon(path, numbers.data(), pairs, isClosed));
}

}  // namespace

SvgShape::~SvgShape() {
    if (path_ != VG_INVALID_HANDLE) vgDestroyPath(path_);
}

Status SvgShape::ensurePath() noexcept {
    if (path_ != VG_INVALID_HANDLE) return Status::kOk;
    Status status = createPath(path_);
    if (status == Status::kOk) status = buildGeometry(path_);
    if (status != Status::kOk) {
        if (path_ != VG_INVALID_HANDLE) vgDestroyPath(path_);
        path_ = VG_INVALID_HANDLE;
        return status;
    }
    vgRemovePathCapabilities(path_, kWriteCapabilities);
    return Status::kOk;
}

const Box& SvgShape::pathBounds() noexcept {
    if (!hasPathBounds_ && path_ != VG_INVALID_HANDLE) readPathBounds();
    return pathBounds_;
}

void SvgShape::readPathBounds() noexcept {
    hasPathBounds_ = true;
    float x = 0.0F;
    float y = 0.0F;
    float width = -1.0F;  // an empty path gives this size, which makes an empty box
    float height = -1.0F;
    vgPathBounds(path_, &x, &y, &width, &height);
    pathBounds_ = {base::finite(x), base::finite(y), base::finite(x + width),
                   base::finite(y + height)};
}

float SvgShape::length(AttributeId id, LengthAxis axis) const noexcept {
    const char* text = attribute(id);
    if (text == nullptr) return 0.0F;
    return base::finite(
        resolveLength(parseLength(text), resources_.screen.dpi, &lengthViewport(), axis));
}

Status SvgCircle::buildGeometry(VGPath path) noexcept {
    const float r = length(AttributeId::kR, LengthAxis::kDiagonal);
    if (!(r > 0.0F)) return Status::kOk;
    const float cx = length(AttributeId::kCx, LengthAxis::kHorizontal);
    const float cy = length(AttributeId::kCy, LengthAxis::kVertical);
    return statusOfUtility(vguEllipse(path, cx, cy, 2.0F * r, 2.0F * r));
}

Status SvgEllipse::buildGeometry(VGPath path) noexcept {
    const float rx = length(AttributeId::kRx, LengthAxis::kHorizontal);
    const float ry = length(AttributeId::kRy, LengthAxis::kVertical);
    if (!(rx > 0.0F && ry > 0.0F)) return Status::kOk;
    const float cx = length(AttributeId::kCx, LengthAxis::kHorizontal);
    const float cy = length(AttributeId::kCy, LengthAxis::kVertical);
    return statusOfUtility(vguEllipse(path, cx, cy, 2.0F * rx, 2.0F * ry));
}

Status SvgLine::buildGeometry(VGPath path) noexcept {
    return statusOfUtility(vguLine(path, length(AttributeId::kX1, LengthAxis::kHorizontal),
                                   length(AttributeId::kY1, LengthAxis::kVertical),
                                   length(AttributeId::kX2, LengthAxis::kHorizontal),
                                   length(AttributeId::kY2, LengthAxis::kVertical)));
}

Status SvgRect::buildGeometry(VGPath path) noexcept {
    const float x = length(AttributeId::kX, LengthAxis::kHorizontal);
    const float y = length(AttributeId::kY, LengthAxis::kVertical);
    const float width = length(AttributeId::kWidth, LengthAxis::kHorizontal);
    const float height = length(AttributeId::kHeight, LengthAxis::kVertical);
    const bool hasRx = attribute(AttributeId::kRx) != nullptr;
    const bool hasRy = attribute(AttributeId::kRy) != nullptr;
    if (!hasRx && !hasRy) return statusOfUtility(vguRect(path, x, y, width, height));

    // A missing radius takes the value of the other one.
    float rx = length(AttributeId::kRx, LengthAxis::kHorizontal);
    float ry = length(AttributeId::kRy, LengthAxis::kVertical);
    if (!hasRx) rx = ry;
    if (!hasRy) ry = rx;
    return statusOfUtility(vguRoundRect(path, x, y, width, height, 2.0F * rx, 2.0F * ry));
}

Status SvgPolyline::buildGeometry(VGPath path) noexcept {
    return appendPoints(resources_, attribute(AttributeId::kPoints), path, VG_FALSE);
}

Status SvgPolygon::buildGeometry(VGPath path) noexcept {
    return appendPoints(resources_, attribute(AttributeId::kPoints), path, VG_TRUE);
}

Status SvgPath::buildGeometry(VGPath path) noexcept {
    const char* text = attribute(AttributeId::kPathData);
    if (text == nullptr) return Status::kOk;
    PathData& data = resources_.pathData;
    const Status status = parsePathData(text, data);
    if (status != Status::kOk || data.segments.isEmpty()) return status;
    vgAppendPathData(path, data.segments.count(), data.segments.data(), data.coordinates.data());
    return takeEngineError();
}

float SvgPath::pathLength() const noexcept {
    if (const char* text = attribute(AttributeId::kPathLength)) {
        TextCursor cursor(text);
        return base::finite(readNumber(cursor));
    }
    if (path() == VG_INVALID_HANDLE) return 0.0F;
    const VGint segments = vgGetParameteri(path(), VG_PATH_NUM_SEGMENTS);
    return segments > 0 ? vgPathLength(path(), 0, segments) : 0.0F;
}

}  // namespace quor
