#pragma once

#include <cstdint>
#include <memory>
#include <string>

namespace tool {

/// Takes a picture row by row and puts it into a file.
class PictureWriter {
public:
    virtual ~PictureWriter() = default;

    /// The next rows from the top, without gaps: words with alpha in bits 24 to 31, then red,
    /// green, blue. Throws FileError.
    virtual void writeRows(const std::uint32_t* pixels, std::uint32_t rowCount) = 0;

    /// After the last row: completes the file. Without it nothing is left behind. Throws FileError.
    virtual void finish() = 0;
};

enum class PictureFormat : std::uint32_t {
    kPng,
    kWebp,  ///< lossless
    kRaw,   ///< bytes red, green, blue, alpha (straight), nothing else
};

struct PictureFile {
    std::string path;  ///< "-" is standard output
    std::uint32_t width = 0;
    std::uint32_t height = 0;
};

/// A writer for premultiplied pixels. `compression` is 0 (none) to 9 (smallest), or
/// kDefaultCompression. Throws FileError when the place cannot be written to or the format cannot
/// hold the picture.
std::unique_ptr<PictureWriter> openPicture(PictureFormat format, const PictureFile& file,
                                           int compression);

/// A good deal smaller than fast, a good deal faster than small.
inline constexpr int kDefaultCompression = -1;

}  // namespace tool
