#include "png_writer.h"

#include <png.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <memory>

#include "file_error.h"
#include "input_file.h"

namespace tool {

namespace {

using Bytes = std::unique_ptr<unsigned char[]>;

struct EncodedPicture {
    Bytes bytes;
    std::size_t count;
};

/// channel * 255 / alpha, rounded to nearest. A channel cannot exceed its alpha, but for rounding.
std::uint32_t straightChannel(std::uint32_t channel, std::uint32_t alpha) {
    return std::min((channel * 255 + alpha / 2) / alpha, 255u);
}

std::uint32_t straightPixel(std::uint32_t pixel) {
    const std::uint32_t alpha = pixel >> 24;
    if (alpha == 0) return 0;
    std::uint32_t straight = alpha << 24;
    for (const int shift : {16, 8, 0})
        straight |= straightChannel(pixel >> shift & 0xFF, alpha) << shift;
    return straight;
}

void storeBytes(std::uint32_t pixel, unsigned char* rgba) {
    for (const int shift : {16, 8, 0, 24})  // red, green, blue, alpha
        *rgba++ = static_cast<unsigned char>(pixel >> shift);
}

Bytes rgbaOf(const std::uint32_t* pixels, std::size_t count, AlphaKind alpha) {
    Bytes rgba = std::make_unique_for_overwrite<unsigned char[]>(count * 4);
    for (std::size_t i = 0; i < count; ++i) {
        const bool isStraight = alpha == AlphaKind::kStraight;
        storeBytes(isStraight ? pixels[i] : straightPixel(pixels[i]), &rgba[i * 4]);
    }
    return rgba;
}

EncodedPicture encode(const Bytes& rgba, std::uint32_t width, std::uint32_t height) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = width;
    image.height = height;
    image.format = PNG_FORMAT_RGBA;
    png_alloc_size_t count = PNG_IMAGE_PNG_SIZE_MAX(image);
    Bytes bytes = std::make_unique_for_overwrite<unsigned char[]>(count);
    if (png_image_write_to_memory(&image, bytes.get(), &count, 0, rgba.get(), 0, nullptr) == 0)
        throw FileError(std::string("the picture cannot be encoded: ") + image.message);
    return {std::move(bytes), count};
}

[[noreturn]] void throwUnwritable(const std::string& path, int error) {
    throw FileError("cannot write " + path + ": " + std::strerror(error) +
                    "; choose another place with -o");
}

bool writeAndFlush(std::FILE* file, const EncodedPicture& picture) {
    return std::fwrite(picture.bytes.get(), 1, picture.count, file) == picture.count &&
           std::fflush(file) == 0;
}

void writeFile(const std::string& path, const EncodedPicture& picture) {
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) throwUnwritable(path, errno);
    const bool isWritten = writeAndFlush(file, picture);
    const int writeError = errno;
    const bool isClosed = std::fclose(file) == 0;
    if (!isWritten || !isClosed) throwUnwritable(path, isWritten ? errno : writeError);
}

}  // namespace

void makeStraight(std::uint32_t* pixels, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) pixels[i] = straightPixel(pixels[i]);
}

void writePng(const std::string& path, const std::uint32_t* pixels, std::uint32_t width,
              std::uint32_t height, AlphaKind alpha) {
    const Bytes rgba = rgbaOf(pixels, std::size_t{width} * height, alpha);
    const EncodedPicture picture = encode(rgba, width, height);
    if (path != kStandardStream) return writeFile(path, picture);
    if (!writeAndFlush(stdout, picture)) throwUnwritable("<stdout>", errno);
}

}  // namespace tool
