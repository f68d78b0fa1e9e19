#include "vg/path/path_pool.h"

#include "vg/path/path.h"

namespace vg {

Path* PathPool::take() noexcept {
    if (count_ == 0) return nullptr;
    const Entry& entry = entries_[--count_];
    bytes_ -= entry.bytes;
    return entry.path;
}

void PathPool::give(Path* path) noexcept {
    const size_t bytes = path->byteCount();
    if (count_ == kMaxPaths || bytes > kMaxBytes - bytes_) {
        delete path;
        return;
    }
    path->clear();
    entries_[count_++] = {path, bytes};
    bytes_ += bytes;
}

void PathPool::release() noexcept {
    while (Path* path = take()) delete path;
}

}  // namespace vg
