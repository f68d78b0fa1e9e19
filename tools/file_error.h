#pragma once

#include <stdexcept>
#include <string>

namespace tool {

/// What is wrong with one file and what to do about it, in words for its user. Whoever reports it
/// puts the file's name in front: "FILE: message", or "FILE:LINE: message" when there is a line.
class FileError : public std::runtime_error {
public:
    explicit FileError(const std::string& message, int line = 0)
        : std::runtime_error(message), line_(line) {}

    /// Counted from 1; 0 when the fault has no line.
    int line() const noexcept { return line_; }

private:
    int line_;
};

}  // namespace tool
