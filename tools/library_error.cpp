#include "library_error.h"

#include <cstdio>

#include "input_file.h"
#include "quor/quor.h"
#include "terminal.h"

namespace tool {

void throwOutOfMemory() {
    throw FileError("the memory does not suffice; render it smaller or close other programs");
}

void requireSuccess(std::uint32_t error) {
    if (error == QUOR_NO_ERROR) return;
    if (error == QUOR_OUT_OF_MEMORY_ERROR) throwOutOfMemory();
    if (error == QUOR_INVALID_SVG_ERROR) {
        throw FileError(
            "its <use> elements refer in a circle, or nest or repeat without bounds; "
            "break the chain");
    }
    throw FileError("it cannot be drawn (library error " + std::to_string(error) + ")");
}

std::string reportText(const std::string& input, const FileError& error) {
    const std::string line = error.line() > 0 ? ":" + std::to_string(error.line()) : "";
    return styled(stderr, Style::kBold, displayName(input) + line + ":") + " " + error.what() +
           "\n";
}

void report(const std::string& input, const FileError& error) {
    std::fputs(reportText(input, error).c_str(), stderr);
}

}  // namespace tool
