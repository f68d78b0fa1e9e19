#pragma once

#include <cstddef>
#include <set>
#include <string>

namespace tool {

/// Decides where each picture goes: beside its input, into one folder, into one named file, or to
/// standard output. No picture overwrites another one of the run, nor an input.
class OutputPlan {
public:
    /// `output` is what -o names: a file, a folder (it exists or ends in '/'), "-", or empty for
    /// "beside each input". Throws FileError, with the output named in the message, when it cannot
    /// take `inputCount` pictures.
    OutputPlan(const std::string& output, std::size_t inputCount);

    /// The path for the picture of `input`, or "-". Throws FileError when the path is taken.
    std::string pathFor(const std::string& input);

private:
    std::string choosePath(const std::string& input) const;

    std::string output_;
    bool isFolder_;
    std::set<std::string> taken_;
};

}  // namespace tool
