#pragma once

#include <memory>

#include "picture_writer.h"

namespace tool {

/// Writes WebP without loss, from memory for the whole picture. Throws FileError when the tool was
/// built without the library for it, and for sides above 16,383 pixels.
std::unique_ptr<PictureWriter> openWebp(const PictureFile& file, int compression);

}  // namespace tool
