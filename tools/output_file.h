#pragma once

#include <cstddef>
#include <cstdio>
#include <string>

namespace tool {

/// A file that is there whole or not at all: it is written beside its place and moved there by
/// commit(). Standard output ("-") and what is no ordinary file (a device, a pipe) are written
/// directly.
class OutputFile {
public:
    /// Throws FileError when the place cannot be written to.
    explicit OutputFile(const std::string& path);
    /// Without commit() nothing stays behind.
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    /// Throws FileError.
    void write(const void* bytes, std::size_t count);

    /// Completes the file and puts it in place. Throws FileError.
    void commit();

private:
    void openBeside();
    void close() noexcept;
    [[noreturn]] void throwUnwritable(int error) const;

    std::string path_;       ///< as messages call it
    std::string target_;     ///< behind symbolic links
    std::string temporary_;  ///< empty when written directly
    std::FILE* file_ = nullptr;
};

}  // namespace tool
