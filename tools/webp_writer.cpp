#include "webp_writer.h"

#include <webp/encode.h>

#include <algorithm>
#include <new>

#include "file_error.h"
#include "output_file.h"
#include "straight_alpha.h"

namespace tool {

namespace {

constexpr int kDefaultLevel = 1;

struct OwnedPicture {
    OwnedPicture() { WebPPictureInit(&value); }
    ~OwnedPicture() { WebPPictureFree(&value); }
    OwnedPicture(const OwnedPicture&) = delete;
    OwnedPicture& operator=(const OwnedPicture&) = delete;

    WebPPicture value;
};

/// What the output threw must not pass through the encoder.
struct Sink {
    OutputFile& output;
    std::exception_ptr failure;
};

int writeBytes(const std::uint8_t* bytes, std::size_t count, const WebPPicture* picture) {
    Sink& sink = *static_cast<Sink*>(picture->custom_ptr);
    try {
        sink.output.write(bytes, count);
        return 1;
    } catch (...) {
        sink.failure = std::current_exception();
        return 0;
    }
}

class WebpWriter : public PictureWriter {
public:
    WebpWriter(const PictureFile& file, int compression)
        : output_(file.path), compression_(compression) {
        WebPPicture& picture = picture_.value;
        picture.use_argb = 1;
        picture.width = static_cast<int>(file.width);
        picture.height = static_cast<int>(file.height);
        if (WebPPictureAlloc(&picture) == 0) throw std::bad_alloc();
    }

    void writeRows(const std::uint32_t* pixels, std::uint32_t rowCount) override {
        const WebPPicture& picture = picture_.value;
        const auto width = static_cast<std::size_t>(picture.width);
        for (; rowCount > 0; --rowCount, ++row_, pixels += width) {
            std::uint32_t* row =
                picture.argb + row_ * static_cast<std::size_t>(picture.argb_stride);
            std::copy_n(pixels, width, row);
            makeStraight(row, width);
        }
    }

    void finish() override {
        WebPConfig config;
        const int level = compression_ == kDefaultCompression ? kDefaultLevel : compression_;
        if (WebPConfigInit(&config) == 0 || WebPConfigLosslessPreset(&config, level) == 0)
            throw FileError("the WebP library is of another version than its headers");
        Sink sink{output_, nullptr};
        picture_.value.writer = writeBytes;
        picture_.value.custom_ptr = &sink;
        const bool isEncoded = WebPEncode(&config, &picture_.value) != 0;
        if (sink.failure) std::rethrow_exception(sink.failure);
        if (!isEncoded) throwEncodingError(picture_.value.error_code);
        output_.commit();
    }

private:
    [[noreturn]] static void throwEncodingError(WebPEncodingError error) {
        if (error == VP8_ENC_ERROR_OUT_OF_MEMORY || error == VP8_ENC_ERROR_BITSTREAM_OUT_OF_MEMORY)
            throw std::bad_alloc();
        throw FileError("the picture cannot be encoded as WebP (error " + std::to_string(error) +
                        "); write a PNG");
    }

    OutputFile output_;
    int compression_;
    OwnedPicture picture_;
    std::size_t row_ = 0;
};

}  // namespace

std::unique_ptr<PictureWriter> openWebp(const PictureFile& file, int compression) {
    if (std::max(file.width, file.height) > WEBP_MAX_DIMENSION) {
        throw FileError("a WebP picture can have " + std::to_string(WEBP_MAX_DIMENSION) +
                        " pixels a side; make it smaller, or a PNG");
    }
    return std::make_unique<WebpWriter>(file, compression);
}

}  // namespace tool
