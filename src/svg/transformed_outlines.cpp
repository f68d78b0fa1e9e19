// An LRU cache: copies are kept in the order of their last use, the latest first, and the last one
// is overwritten when a new one is needed.

#include "svg/transformed_outlines.h"

#include <algorithm>

#include "svg/engine_error.h"

namespace quor {

namespace {

bool haveSameValues(const SvgMatrix& a, const SvgMatrix& b) noexcept {
    return a.m00 == b.m00 && a.m01 == b.m01 && a.m02 == b.m02 && a.m10 == b.m10 && a.m11 == b.m11 &&
           a.m12 == b.m12;
}

}  // namespace

TransformedOutlines::~TransformedOutlines() {
    for (const Copy& copy : copies_) vgDestroyPath(copy.path);
}

Status TransformedOutlines::find(VGPath outline, const SvgMatrix& transform,
                                 VGPath& copy) noexcept {
    copy = VG_INVALID_HANDLE;
    const auto* const found =
        std::find_if(copies_.begin(), copies_.end(), [&](const Copy& candidate) noexcept {
            return haveSameValues(candidate.transform, transform);
        });
    if (found != copies_.end()) {
        putFirst(static_cast<int>(found - copies_.begin()));
    } else if (const Status status = make(outline, transform); status != Status::kOk) {
        return status;
    }
    copy = copies_[0].path;
    return Status::kOk;
}

/// Makes the first copy, in the place of the one not used for longest when there are enough.
Status TransformedOutlines::make(VGPath outline, const SvgMatrix& transform) noexcept {
    const Status status = copies_.count() < kMaxPaths ? add() : Status::kOk;
    if (status != Status::kOk) return status;
    putFirst(copies_.count() - 1);
    vgClearPath(copies_[0].path, VG_PATH_CAPABILITY_ALL);
    vgTransformPath(copies_[0].path, outline);
    copies_[0].transform = transform;
    const Status made = takeEngineError();
    if (made != Status::kOk) {  // an empty path must not pass for the copy
        vgDestroyPath(copies_[0].path);
        std::rotate(copies_.begin(), copies_.begin() + 1, copies_.end());
        copies_.pop();
    }
    return made;
}

/// Appends an empty path.
Status TransformedOutlines::add() noexcept {
    if (!copies_.reserve(copies_.count() + 1)) {
        copies_.clearFailure();
        return Status::kOutOfMemory;
    }
    const VGPath path = vgCreatePath(VG_PATH_FORMAT_STANDARD, VG_PATH_DATATYPE_F, 1.0F, 0.0F, 0, 0,
                                     VG_PATH_CAPABILITY_ALL);
    if (path == VG_INVALID_HANDLE) return takeEngineError();
    copies_.pushReserved({path, {}});
    return Status::kOk;
}

void TransformedOutlines::putFirst(int index) noexcept {
    std::rotate(copies_.begin(), copies_.begin() + index, copies_.begin() + index + 1);
}

}  // namespace quor
