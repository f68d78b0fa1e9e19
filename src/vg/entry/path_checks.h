#pragma once

#include "vg/entry/entry_checks.h"
#include "vg/path/path.h"

// The checks that entry points of paths have in common.
namespace vg {

/// The path behind the handle. Null, with the error raised, when there is none.
inline Path* findOrRaise(Context& context, VGPath handle) noexcept {
    Path* path = context.findPath(handle);
    if (path == nullptr) context.raise(VG_BAD_HANDLE_ERROR);
    return path;
}

/// True when the path has every one of the capabilities; else the error is raised.
inline bool allows(Context& context, const Path& path, VGbitfield capabilities) noexcept {
    if ((path.capabilities & capabilities) == capabilities) return true;
    context.raise(VG_PATH_CAPABILITY_ERROR);
    return false;
}

/// Both checks in one.
inline Path* findAllowing(Context& context, VGPath handle, VGbitfield capabilities) noexcept {
    Path* path = findOrRaise(context, handle);
    return path != nullptr && allows(context, *path, capabilities) ? path : nullptr;
}

/// Where a call writes to and what it reads; both null unless all checks pass.
struct PathPair {
    Path* destination = nullptr;
    const Path* source = nullptr;
};

/// The handles are checked before the capabilities, the destination first each time.
inline PathPair findPair(Context& context, VGPath destinationHandle, VGbitfield destinationNeeds,
                         VGPath sourceHandle, VGbitfield sourceNeeds) noexcept {
    Path* destination = findOrRaise(context, destinationHandle);
    const Path* source = findOrRaise(context, sourceHandle);
    if (destination == nullptr || source == nullptr) return {};
    if (!allows(context, *destination, destinationNeeds)) return {};
    if (!allows(context, *source, sourceNeeds)) return {};
    return {destination, source};
}

/// True when the path has segments `first` to `first + count - 1`, and count is at least 1.
inline bool hasSegments(const Path& path, VGint first, VGint count) noexcept {
    const int32_t available = path.segments.count();
    return 0 <= first && first < available && 1 <= count && count <= available - first;
}

}  // namespace vg
