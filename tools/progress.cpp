#include "progress.h"

#include <unistd.h>

#include <cstdio>

namespace tool {

namespace {

constexpr std::size_t kLongestName = 56;  // the line must not wrap at 80 columns

/// The end of a long name tells more than its beginning. Control characters must not reach the
/// terminal: a file may be called anything.
std::string shortName(std::string name) {
    if (name.size() > kLongestName) name = "..." + name.substr(name.size() - kLongestName + 3);
    for (char& c : name)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) c = '?';
    return name;
}

}  // namespace

Progress::Progress(std::size_t total)
    : total_(total), isActive_(total > 1 && isatty(STDERR_FILENO) != 0) {}

void Progress::show(std::size_t position, const std::string& name) {
    if (!isActive_) return;
    std::fprintf(stderr, "\r\x1b[K[%zu/%zu] %s", position, total_, shortName(name).c_str());
    std::fflush(stderr);
    isShown_ = true;
}

void Progress::clear() {
    if (isShown_) std::fputs("\r\x1b[K", stderr);
    isShown_ = false;
}

}  // namespace tool
