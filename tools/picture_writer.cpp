#include "picture_writer.h"

#include <vector>

#include "output_file.h"
#include "png_writer.h"
#include "straight_alpha.h"
#include "webp_writer.h"

namespace tool {

namespace {

class RawWriter : public PictureWriter {
public:
    explicit RawWriter(const PictureFile& file) : output_(file.path), bytes_(file.width * 4) {}

    void writeRows(const std::uint32_t* pixels, std::uint32_t rowCount) override {
        const std::size_t width = bytes_.size() / 4;
        for (; rowCount > 0; --rowCount, pixels += width) {
            storeRgba(pixels, width, AlphaKind::kPremultiplied, bytes_.data());
            output_.write(bytes_.data(), bytes_.size());
        }
    }
    void finish() override { output_.commit(); }

private:
    OutputFile output_;
    std::vector<unsigned char> bytes_;  ///< one row
};

}  // namespace

std::unique_ptr<PictureWriter> openPicture(PictureFormat format, const PictureFile& file,
                                           int compression) {
    switch (format) {
        case PictureFormat::kWebp:
            return openWebp(file, compression);
        case PictureFormat::kRaw:
            return std::make_unique<RawWriter>(file);
        case PictureFormat::kPng:
            break;
    }
    return std::make_unique<PngWriter>(file, AlphaKind::kPremultiplied, compression);
}

}  // namespace tool
