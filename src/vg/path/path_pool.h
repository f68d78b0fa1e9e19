#pragma once

#include <cstddef>
#include <cstdint>

namespace vg {

struct Path;

/// A free list of destroyed paths, whose memory serves those made next: documents make and free
/// many small ones.
class PathPool {
public:
    static constexpr int32_t kMaxPaths = 128;
    static constexpr size_t kMaxBytes = size_t{256} * 1024;  ///< of all its paths

    PathPool() noexcept = default;
    PathPool(const PathPool&) = delete;
    PathPool& operator=(const PathPool&) = delete;
    ~PathPool() { release(); }

    /// A path without segments, the caller's from now on; null when there is none.
    Path* take() noexcept;

    /// Takes over a path that nobody else refers to. It is freed when there is no room for it.
    void give(Path* path) noexcept;

    /// Frees all.
    void release() noexcept;

private:
    struct Entry {
        Path* path;  ///< owned
        size_t bytes;
    };

    Entry entries_[kMaxPaths] = {};
    int32_t count_ = 0;
    size_t bytes_ = 0;
};

}  // namespace vg
