#pragma once

#include <string>
#include <vector>

namespace tool {

/// A drawing to work on.
struct FoundFile {
    std::string path;
    std::string name;  ///< relative to the folder given, with '/'; of a file given: its own name
};

/// The files given as they are, folders replaced by the .svg files below them in the order of their
/// names. Links to folders are not followed. Throws FileError for a folder that cannot be read.
std::vector<FoundFile> findDrawings(const std::vector<std::string>& inputs);

}  // namespace tool
