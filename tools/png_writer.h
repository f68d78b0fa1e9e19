#pragma once

#include <png.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "indexed_picture.h"
#include "output_file.h"
#include "picture_writer.h"
#include "straight_alpha.h"

namespace tool {

/// Writes PNG, 8 bits a channel, with straight alpha: as a palette when all rows come at once and
/// have 256 colours or fewer, else as RGBA.
///
/// Rows are not filtered: of drawings, whose rows mostly repeat, filtered rows are larger as well
/// as slower at every level. Times and sizes are in bench/README.md.
class PngWriter : public PictureWriter {
public:
    PngWriter(const PictureFile& file, AlphaKind alpha, int compression);
    ~PngWriter() override;
    PngWriter(const PngWriter&) = delete;
    PngWriter& operator=(const PngWriter&) = delete;

    void writeRows(const std::uint32_t* pixels, std::uint32_t rowCount) override;
    void finish() override;

private:
    void writeHeader(int colorType);
    void setPalette(std::vector<std::uint32_t> colors);
    void writeIndexed(IndexedPicture picture);

    OutputFile output_;
    std::uint32_t width_, height_;
    AlphaKind alpha_;
    int compression_;
    bool isStarted_ = false;
    std::vector<unsigned char> row_;  ///< RGBA
    png_structp png_ = nullptr;
    png_infop info_ = nullptr;
};

/// A whole picture: width * height words, top row first.
void writePng(const std::string& path, const std::uint32_t* pixels, std::uint32_t width,
              std::uint32_t height, AlphaKind alpha = AlphaKind::kPremultiplied);

}  // namespace tool
