#include "vg/paint.h"

#include "vg/image.h"

namespace vg {

Paint::~Paint() { release(pattern); }

}  // namespace vg
