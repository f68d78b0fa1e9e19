// Making, clearing and destroying paths, and calls that write into them.

#include <new>

#include "base/finite.h"
#include "vg/context.h"
#include "vg/entry/path_checks.h"
#include "vg/path/path.h"
#include "vg/path/path_edit.h"
#include "vg/path/path_interpolate.h"
#include "vg/path/path_transform.h"

namespace vg {

namespace {

/// 0 when memory or handles run out.
VGPath addPath(Context& context, const Path& properties) noexcept {
    Path* path = context.shared->sparePaths.take();
    if (path == nullptr) path = new (std::nothrow) Path;
    if (path == nullptr) return VG_INVALID_HANDLE;
    path->datatype = properties.datatype;
    path->scale = properties.scale;
    path->bias = properties.bias;
    path->capabilities = properties.capabilities;
    const VGPath handle = context.shared->objects.add(path, context.contextId);
    if (handle == VG_INVALID_HANDLE) release(path);
    return handle;
}

void destroyPath(SharedResources& shared, VGPath handle) noexcept {
    auto* const path = static_cast<Path*>(shared.objects.take(handle));
    if (path->references == 1) {
        shared.sparePaths.give(path);
    } else {
        release(path);
    }
}

}  // namespace

}  // namespace vg

using vg::Context;
using vg::Path;

// The capacity hints are not needed: a path grows by whole appends.
VGPath vgCreatePath(VGint format, VGint datatype, VGfloat scale, VGfloat bias,
                    VGint /*segmentCapacityHint*/, VGint /*coordCapacityHint*/,
                    VGbitfield capabilities) {
    Context* context = vg::currentContext();
    if (context == nullptr) return VG_INVALID_HANDLE;
    Path properties;
    properties.datatype = datatype;
    properties.scale = base::finite(scale);
    properties.bias = base::finite(bias);
    properties.capabilities = capabilities & VG_PATH_CAPABILITY_ALL;
    if (format != VG_PATH_FORMAT_STANDARD) {
        context->raise(VG_UNSUPPORTED_PATH_FORMAT_ERROR);
        return VG_INVALID_HANDLE;
    }
    if (datatype < VG_PATH_DATATYPE_S_8 || datatype > VG_PATH_DATATYPE_F ||
        properties.scale == 0.0F) {
        context->raise(VG_ILLEGAL_ARGUMENT_ERROR);
        return VG_INVALID_HANDLE;
    }
    VGPath handle = VG_INVALID_HANDLE;
    vg::doOrRaise(*context, [&] {
        handle = vg::addPath(*context, properties);
        return handle != VG_INVALID_HANDLE;
    });
    return handle;
}

void vgClearPath(VGPath handle, VGbitfield capabilities) {
    Context* context = vg::currentContext();
    if (context == nullptr) return;
    Path* path = vg::findOrRaise(*context, handle);
    if (path == nullptr) return;
    path->clear();
    path->capabilities = capabilities & VG_PATH_CAPABILITY_ALL;
}

void vgDestroyPath(VGPath handle) {
    Context* context = vg::currentContext();
    if (context == nullptr) return;
    if (vg::findOrRaise(*context, handle) != nullptr) vg::destroyPath(*context->shared, handle);
}

void vgRemovePathCapabilities(VGPath handle, VGbitfield capabilities) {
    Context* context = vg::currentContext();
    if (context == nullptr) return;
    Path* path = vg::findOrRaise(*context, handle);
    if (path != nullptr) path->capabilities &= ~capabilities;
}

VGbitfield vgGetPathCapabilities(VGPath handle) {
    Context* context = vg::currentContext();
    if (context == nullptr) return 0;
    const Path* path = vg::findOrRaise(*context, handle);
    return path != nullptr ? path->capabilities : 0;
}

void vgAppendPath(VGPath destinationHandle, VGPath sourceHandle) {
    Context* context = vg::currentContext();
    if (context == nullptr) return;
    const vg::PathPair pair =
        vg::findPair(*context, destinationHandle, VG_PATH_CAPABILITY_APPEND_TO, sourceHandle,
                     VG_PATH_CAPABILITY_APPEND_FROM);
    if (pair.destination == nullptr) return;
    vg::doOrRaise(*context, [&] { return vg::appendPath(*pair.destination, *pair.source); });
}

void vgAppendPathData(VGPath handle, VGint segmentCount, const VGubyte* segments,
                      const void* data) {
    Context* context = vg::currentContext();
    if (context == nullptr) return;
    Path* path = vg::findAllowing(*context, handle, VG_PATH_CAPABILITY_APPEND_TO);
    if (path == nullptr) return;
    const auto alignment = static_cast<uintptr_t>(vg::coordinateSize(path->datatype));
    if (segments == nullptr || segmentCount < 1 || !vg::isUsableArray(data, alignment)) {
        return context->raise(VG_ILLEGAL_ARGUMENT_ERROR);
    }
    const int64_t coordinates = vg::countCoordinates(segments, segmentCount);
    if (coordinates < 0) return context->raise(VG_ILLEGAL_ARGUMENT_ERROR);
    vg::doOrRaise(*context,
                  [&] { return vg::appendRaw(*path, segments, segmentCount, data, coordinates); });
}

void vgModifyPathCoords(VGPath handle, VGint startIndex, VGint segmentCount, const void* data) {
    Context* context = vg::currentContext();
    if (context == nullptr) return;
    Path* path = vg::findAllowing(*context, handle, VG_PATH_CAPABILITY_MODIFY);
    if (path == nullptr) return;
    const int32_t size = vg::coordinateSize(path->datatype);
    if (!vg::isUsableArray(data, static_cast<uintptr_t>(size)) ||
        !vg::hasSegments(*path, startIndex, segmentCount)) {
        return context->raise(VG_ILLEGAL_ARGUMENT_ERROR);
    }
    vg::modifyCoordinates(*path, startIndex, segmentCount, data);
}

void vgTransformPath(VGPath destinationHandle, VGPath sourceHandle) {
    Context* context = vg::currentContext();
    if (context == nullptr) return;
    const vg::PathPair pair =
        vg::findPair(*context, destinationHandle, VG_PATH_CAPABILITY_TRANSFORM_TO, sourceHandle,
                     VG_PATH_CAPABILITY_TRANSFORM_FROM);
    if (pair.destination == nullptr) return;
    const vg::AffineMap map(context->matrix(VG_MATRIX_PATH_USER_TO_SURFACE));
    vg::doOrRaise(*context,
                  [&] { return vg::transformPath(*pair.destination, *pair.source, map); });
}

VGboolean vgInterpolatePath(VGPath destinationHandle, VGPath startHandle, VGPath endHandle,
                            VGfloat amount) {
    Context* context = vg::currentContext();
    if (context == nullptr) return VG_FALSE;
    Path* destination = vg::findOrRaise(*context, destinationHandle);
    const Path* start = vg::findOrRaise(*context, startHandle);
    const Path* end = vg::findOrRaise(*context, endHandle);
    if (destination == nullptr || start == nullptr || end == nullptr) return VG_FALSE;
    if (!vg::allows(*context, *destination, VG_PATH_CAPABILITY_INTERPOLATE_TO) ||
        !vg::allows(*context, *start, VG_PATH_CAPABILITY_INTERPOLATE_FROM) ||
        !vg::allows(*context, *end, VG_PATH_CAPABILITY_INTERPOLATE_FROM)) {
        return VG_FALSE;
    }
    const auto weight = static_cast<double>(base::finite(amount));
    if (!vg::canInterpolate(*start, *end)) return VG_FALSE;
    const bool isDone = vg::doOrRaise(
        *context, [&] { return vg::interpolate(*destination, *start, *end, weight); });
    return isDone ? VG_TRUE : VG_FALSE;
}
