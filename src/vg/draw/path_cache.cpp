// Two least-recently-used lists, of flattenings by tolerance and of stroke outlines by all that
// they depend on, and one box. A linear search is enough for at most 32 entries.

#include "vg/draw/path_cache.h"

#include <algorithm>
#include <new>

#include "vg/path/flatten.h"

namespace vg {
namespace {

/// Replaces the contents, in no more memory than they need.
template <class T>
bool copyArray(const T* values, int count, base::Array<T>& copy) noexcept {
    copy.clear();
    copy.clearFailure();
    if (!copy.reserve(count) || !copy.resize(count)) return false;
    std::copy_n(values, count, copy.data());
    return true;
}

template <class T>
bool copyArray(const base::Array<T>& array, base::Array<T>& copy) noexcept {
    return copyArray(array.data(), array.count(), copy);
}

bool areEqual(const StrokeParams& a, const StrokeParams& b) noexcept {
    return a.halfWidth == b.halfWidth && a.startCap == b.startCap && a.endCap == b.endCap &&
           a.join == b.join && a.miterLengthSquared == b.miterLengthSquared &&
           a.flatness == b.flatness && a.dashTotal == b.dashTotal && a.dashPhase == b.dashPhase &&
           a.dashPhaseReset == b.dashPhaseReset && a.dashCount == b.dashCount &&
           std::equal(a.dashes, a.dashes + a.dashCount, b.dashes);
}

}  // namespace

size_t KeptFlattening::byteCount() const noexcept { return sizeof *this + outline.byteCount(); }

size_t KeptStroke::byteCount() const noexcept {
    return sizeof *this + base::byteCount(dashes) + outline.byteCount();
}

const KeptFlattening* PathCache::flatten(const Path& path,
                                         const FlatteningTolerance& tolerance) noexcept {
    const KeptFlattening* const found = flattenings.find([&](const KeptFlattening& kept) noexcept {
        return kept.toleranceSquared == tolerance.squared;
    });
    if (found != nullptr) return found;
    KeptFlattening* const made = flattenings.add();
    if (made == nullptr) return nullptr;
    made->toleranceSquared = tolerance.squared;
    if (!vg::flatten(path, tolerance, made->outline)) {
        flattenings.dropFirst();
        return nullptr;
    }
    flattenings.trim();
    return made;
}

const KeptStroke* PathCache::findStroke(const StrokeParams& params,
                                        float toleranceSquared) noexcept {
    return strokes.find([&](const KeptStroke& kept) noexcept {
        return kept.toleranceSquared == toleranceSquared && areEqual(kept.params, params);
    });
}

const KeptStroke* PathCache::keepStroke(const StrokeParams& params, float toleranceSquared,
                                        const Outline& outline) noexcept {
    constexpr auto kMaxPoints =
        static_cast<int>(RecentCache<KeptStroke>::kMaxBytes / sizeof(raster::Point));
    if (outline.points.count() > kMaxPoints || params.dashCount > kMaxPoints) return nullptr;
    KeptStroke* const kept = strokes.add();
    if (kept == nullptr) return nullptr;
    if (!copyArray(params.dashes, params.dashCount, kept->dashes) ||
        !copyArray(outline.points, kept->outline.points) ||
        !copyArray(outline.contourSizes, kept->outline.contourSizes)) {
        strokes.dropFirst();
        return nullptr;
    }
    kept->toleranceSquared = toleranceSquared;
    kept->params = params;
    kept->params.dashes = kept->dashes.data();
    strokes.trim();
    return kept;
}

PathBox PathCache::boundsUnder(const Path& path, const Matrix3& matrix) noexcept {
    if (!hasBounds_ || boundsMatrix_ != matrix) {
        bounds_ = transformedPathBounds(path, matrix);
        boundsMatrix_ = matrix;
        hasBounds_ = true;
    }
    return bounds_;
}

void PathCache::clear() noexcept {
    flattenings.clear();
    strokes.clear();
    hasBounds_ = false;
    fillBands.release();
    strokeBands.release();
}

bool ensureCache(Path& path) noexcept {
    if (path.leftovers == nullptr) path.leftovers = new (std::nothrow) PathCache;
    return path.leftovers != nullptr;
}

}  // namespace vg
