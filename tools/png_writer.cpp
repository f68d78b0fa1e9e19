#include "png_writer.h"

#include <zlib.h>

#include <array>
#include <new>

#include "file_error.h"

namespace tool {

namespace {

constexpr std::size_t kChunkSize = std::size_t{1} << 17;  // of compressed data

// libpng is left by these exceptions instead of longjmp: it is compiled with unwind tables, and
// what it allocated is freed with its structures.

[[noreturn]] void throwPngError(png_structp, png_const_charp message) {
    throw FileError(std::string("the picture cannot be encoded: ") + message);
}

void ignoreWarning(png_structp, png_const_charp) {}

void writeBytes(png_structp png, png_bytep bytes, png_size_t count) {
    static_cast<OutputFile*>(png_get_io_ptr(png))->write(bytes, count);
}

void flushNothing(png_structp) {}

}  // namespace

PngWriter::PngWriter(const PictureFile& file, AlphaKind alpha, int compression)
    : output_(file.path),
      width_(file.width),
      height_(file.height),
      alpha_(alpha),
      compression_(compression) {
    png_ = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, throwPngError, ignoreWarning);
    if (png_ != nullptr) info_ = png_create_info_struct(png_);
    if (info_ == nullptr) {
        png_destroy_write_struct(&png_, &info_);
        throw std::bad_alloc();
    }
    png_set_write_fn(png_, &output_, writeBytes, flushNothing);
}

PngWriter::~PngWriter() { png_destroy_write_struct(&png_, &info_); }

void PngWriter::writeHeader(int colorType) {
    const bool isIndexed = colorType == PNG_COLOR_TYPE_PALETTE;
    const bool isDefault = compression_ == kDefaultCompression;
    png_set_IHDR(png_, info_, width_, height_, 8, colorType, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_set_filter(png_, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE);
    png_set_compression_buffer_size(png_, kChunkSize);
    png_set_compression_level(png_, isDefault ? 3 : compression_);
    png_set_compression_strategy(png_, isDefault && isIndexed ? Z_RLE : Z_DEFAULT_STRATEGY);
    png_write_info(png_, info_);
    isStarted_ = true;
}

void PngWriter::setPalette(std::vector<std::uint32_t> colors) {
    if (alpha_ == AlphaKind::kPremultiplied) makeStraight(colors.data(), colors.size());
    std::array<png_color, 256> palette;
    std::array<png_byte, 256> alphas;
    for (std::size_t i = 0; i < colors.size(); ++i) {
        const auto channel = [&](int shift) { return static_cast<png_byte>(colors[i] >> shift); };
        palette[i] = {channel(16), channel(8), channel(0)};
        alphas[i] = channel(24);
    }
    const auto count = static_cast<int>(colors.size());
    png_set_PLTE(png_, info_, palette.data(), count);
    png_set_tRNS(png_, info_, alphas.data(), count, nullptr);
}

void PngWriter::writeIndexed(IndexedPicture picture) {
    setPalette(std::move(picture.colors));
    writeHeader(PNG_COLOR_TYPE_PALETTE);
    for (std::uint32_t y = 0; y < height_; ++y)
        png_write_row(png_, &picture.indices[std::size_t{y} * width_]);
}

void PngWriter::writeRows(const std::uint32_t* pixels, std::uint32_t rowCount) {
    if (!isStarted_ && rowCount == height_) {
        auto indexed = indexColors(pixels, std::size_t{width_} * height_);
        if (indexed) return writeIndexed(std::move(*indexed));
    }
    if (!isStarted_) {
        row_.resize(std::size_t{width_} * 4);
        writeHeader(PNG_COLOR_TYPE_RGBA);
    }
    for (; rowCount > 0; --rowCount, pixels += width_) {
        storeRgba(pixels, width_, alpha_, row_.data());
        png_write_row(png_, row_.data());
    }
}

void PngWriter::finish() {
    png_write_end(png_, nullptr);
    output_.commit();
}

void writePng(const std::string& path, const std::uint32_t* pixels, std::uint32_t width,
              std::uint32_t height, AlphaKind alpha) {
    PngWriter writer({path, width, height}, alpha, kDefaultCompression);
    writer.writeRows(pixels, height);
    writer.finish();
}

}  // namespace tool
