#pragma once

#include <cstddef>
#include <set>
#include <string>

#include "folder_walk.h"

namespace tool {

/// Decides where each picture goes: beside its input, into one folder, into one named file, or to
/// standard output. No picture overwrites another one of the run, nor an input.
class OutputPlan {
public:
    /// `output` is what -o names: a file, a folder (it exists or ends in '/'), "-", or empty for
    /// "beside each input". Throws FileError, with the output named in the message, when it cannot
    /// take `inputCount` pictures. `ending` is that of pictures' names: ".png".
    OutputPlan(const std::string& output, std::size_t inputCount, const std::string& ending);

    /// The path for the picture of `input`, or "-". Below the folder that -o names, pictures lie as
    /// their inputs lay in theirs. Throws FileError when the path is taken.
    std::string pathFor(const FoundFile& input);

private:
    std::string choosePath(const FoundFile& input) const;

    std::string output_;
    std::string ending_;
    bool isFolder_;
    std::set<std::string> taken_;
};

}  // namespace tool
