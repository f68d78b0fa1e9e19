#include "gzip.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <new>

#include "file_error.h"

namespace tool {

namespace {

class Inflater {
public:
    explicit Inflater(const std::string& bytes) {
        constexpr int kGzipOnly = 16;
        if (inflateInit2(&stream_, MAX_WBITS + kGzipOnly) != Z_OK) throw std::bad_alloc();
        // The input is at most 256 MiB, and zlib does not write to it.
        stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
        stream_.avail_in = static_cast<uInt>(bytes.size());
    }
    ~Inflater() { inflateEnd(&stream_); }
    Inflater(const Inflater&) = delete;
    Inflater& operator=(const Inflater&) = delete;

    /// Appends the next bytes; false at the end of the stream.
    bool readMore(std::string& text) {
        std::array<char, 65536> block;
        stream_.next_out = reinterpret_cast<Bytef*>(block.data());
        stream_.avail_out = block.size();
        const int result = inflate(&stream_, Z_NO_FLUSH);
        text.append(block.data(), block.size() - stream_.avail_out);
        if (result == Z_MEM_ERROR) throw std::bad_alloc();
        if (result != Z_OK && result != Z_STREAM_END)
            throw FileError("its compressed data is damaged or cut off; fetch it again");
        return result != Z_STREAM_END;
    }

private:
    z_stream stream_{};
};

}  // namespace

bool isGzip(const std::string& bytes) { return bytes.compare(0, 2, "\x1f\x8b") == 0; }

std::string gunzip(const std::string& bytes, std::size_t limit) {
    Inflater inflater(bytes);
    std::string text;
    while (inflater.readMore(text)) {
        if (text.size() > limit)
            throw FileError(
                "unpacked it is larger than 256 MiB, too large for a drawing; split it");
    }
    return text;
}

}  // namespace tool
