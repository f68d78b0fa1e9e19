#pragma once

#include <cstddef>
#include <set>
#include <string>

namespace tool {

/// Names frames after their file and id: "gear.svg" for the only element of a file, else
/// "gear.svg/wheel", or "gear.svg/2" for the third element if it has no id. A name that is taken
/// gets "-2", "-3" and so on.
class FrameNames {
public:
    /// `trimsEndings` leaves the ".svg" out.
    explicit FrameNames(bool trimsEndings) : trimsEndings_(trimsEndings) {}

    /// `index` counts from 0 among the file's `count` elements.
    std::string nameOf(const std::string& input, const std::string& id, std::size_t index,
                       std::size_t count);

private:
    std::string fileName(const std::string& input) const;

    bool trimsEndings_;
    std::set<std::string> taken_;
};

}  // namespace tool
