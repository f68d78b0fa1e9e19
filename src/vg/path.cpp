#include "vg/path.h"

#include <new>

#include "base/finite.h"
#include "vg/context.h"
#include "vg/path_access.h"
#include "vg/path_cache.h"

namespace vg {

Path::~Path() { delete cache; }

bool Path::ensureCache() noexcept {
    if (cache == nullptr) cache = new (std::nothrow) PathCache;
    return cache != nullptr;
}

void Path::releaseCaches() noexcept {
    delete cache;
    cache = nullptr;
}

size_t Path::byteCount() const noexcept {
    return sizeof *this + base::byteCount(segments) + base::byteCount(data) +
           (cache != nullptr ? cache->byteCount() : 0);
}

void Path::clearCache() noexcept { cache->clear(); }

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
    Context* context = vg::currentPair();
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
    Context* context = vg::currentPair();
    if (context == nullptr) return;
    Path* path = vg::findOrRaise(*context, handle);
    if (path == nullptr) return;
    path->clear();
    path->capabilities = capabilities & VG_PATH_CAPABILITY_ALL;
}

void vgDestroyPath(VGPath handle) {
    Context* context = vg::currentPair();
    if (context == nullptr) return;
    if (vg::findOrRaise(*context, handle) != nullptr) vg::destroyPath(*context->shared, handle);
}

void vgRemovePathCapabilities(VGPath handle, VGbitfield capabilities) {
    Context* context = vg::currentPair();
    if (context == nullptr) return;
    Path* path = vg::findOrRaise(*context, handle);
    if (path != nullptr) path->capabilities &= ~capabilities;
}

VGbitfield vgGetPathCapabilities(VGPath handle) {
    Context* context = vg::currentPair();
    if (context == nullptr) return 0;
    const Path* path = vg::findOrRaise(*context, handle);
    return path != nullptr ? path->capabilities : 0;
}
