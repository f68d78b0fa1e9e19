#pragma once

#include <string>
#include <vector>

namespace tool {

/// A document to work on.
struct InputFile {
    std::string path;      ///< "-" is standard input
    std::string relative;  ///< the path below the folder that was named; else the file's name
};

/// Files as they are named, and for each folder its .svg and .svgz files and those of the folders
/// in it, by name. A folder without any is kept: reading it then says what is wrong.
std::vector<InputFile> listInputs(const std::vector<std::string>& named);

}  // namespace tool
