#pragma once

#include <set>
#include <string>

#include "folder_walk.h"

namespace tool {

/// Valid UTF-8: bytes that are none become U+FFFD.
std::string validText(const std::string& text);

/// Names frames after their file: "ui/gear.svg", and "ui/gear.svg/wheel" for one element of it. The
/// names do not depend on other files, but where a name is taken: then it is the path of the file,
/// and if that is taken too, one with "-2", "-3" and so on.
class FrameNames {
public:
    /// `trimsEndings` leaves the ".svg" out.
    explicit FrameNames(bool trimsEndings) : trimsEndings_(trimsEndings) {}

    /// To be called once a file, in their order.
    std::string nameOf(const FoundFile& file);
    /// `element` is its id or its place.
    std::string nameOf(const std::string& fileName, const std::string& element);

private:
    std::string trimmed(const std::string& name) const;
    std::string unique(const std::string& name);

    bool trimsEndings_;
    std::set<std::string> taken_;
};

}  // namespace tool
