#include "file_error.h"
#include "webp_writer.h"

namespace tool {

std::unique_ptr<PictureWriter> openWebp(const PictureFile&, int) {
    throw FileError(
        "this tool was built without WebP; write a PNG, or build it with libwebp-dev there");
}

}  // namespace tool
