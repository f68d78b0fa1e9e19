#include "input_file.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>

#include "file_error.h"
#include "gzip.h"

namespace tool {

namespace {

// Far above any drawing; keeps an endless device from filling the memory.
constexpr std::size_t kLargestInput = std::size_t{256} << 20;

struct CloseFile {
    void operator()(std::FILE* file) const noexcept {
        if (file != stdin) std::fclose(file);
    }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

[[noreturn]] void throwUnreadable(int error) {
    throw FileError(std::string("cannot read it: ") + std::strerror(error) +
                    "; check the name and its permissions");
}

File openInput(const std::string& input) {
    File file(input == kStandardStream ? stdin : std::fopen(input.c_str(), "rb"));
    if (file == nullptr) throwUnreadable(errno);
    return file;
}

std::string readAll(std::FILE* file) {
    std::string bytes;
    std::array<char, 65536> block;
    while (const std::size_t count = std::fread(block.data(), 1, block.size(), file)) {
        if (bytes.size() + count > kLargestInput)
            throw FileError("larger than 256 MiB, too large for a drawing; split it");
        bytes.append(block.data(), count);
    }
    if (std::ferror(file) != 0) throwUnreadable(errno);
    return bytes;
}

bool startsWith(const std::string& bytes, std::string_view prefix) {
    return std::string_view(bytes).substr(0, prefix.size()) == prefix;
}

void rejectOtherEncodings(const std::string& bytes) {
    if (bytes.empty()) throw FileError("the file is empty; it must hold an SVG document");
    if (startsWith(bytes, "\xff\xfe") || startsWith(bytes, "\xfe\xff"))
        throw FileError("its text is UTF-16; save it as UTF-8");
}

void rejectNulBytes(const std::string& text) {
    const std::size_t nul = text.find('\0');
    if (nul == std::string::npos) return;
    const auto end = text.begin() + static_cast<std::ptrdiff_t>(nul);
    const auto line = 1 + std::count(text.begin(), end, '\n');
    throw FileError("there is a NUL byte in the text; save the document as plain UTF-8",
                    static_cast<int>(line));
}

}  // namespace

std::string displayName(const std::string& input) {
    return input == kStandardStream ? "<stdin>" : input;
}

std::string readInputText(const std::string& input) {
    std::string text = readAll(openInput(input).get());
    if (isGzip(text)) text = gunzip(text, kLargestInput);
    rejectOtherEncodings(text);
    if (startsWith(text, "\xef\xbb\xbf")) text.erase(0, 3);
    rejectNulBytes(text);
    return text;
}

}  // namespace tool
