#include "vg/paint/paint.h"

#include "vg/image/image.h"

namespace vg {

Paint::~Paint() { release(pattern); }

}  // namespace vg
