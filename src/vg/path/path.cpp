#include "vg/path/path.h"

namespace vg {

Path::~Path() { delete leftovers; }

void Path::releaseCaches() noexcept {
    delete leftovers;
    leftovers = nullptr;
}

size_t Path::byteCount() const noexcept {
    return sizeof *this + base::byteCount(segments) + base::byteCount(data) +
           (leftovers != nullptr ? leftovers->byteCount() : 0);
}

}  // namespace vg
