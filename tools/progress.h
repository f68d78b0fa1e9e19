#pragma once

#include <cstddef>
#include <string>

namespace tool {

/// One line on standard error that tells how far a run over many files is. It shows only on a
/// terminal and only for more than one file.
class Progress {
public:
    explicit Progress(std::size_t total);
    ~Progress() { clear(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// Replaces the line: the file that is being worked on, `position` counted from 1.
    void show(std::size_t position, const std::string& name);

    /// Removes the line; to be called before anything else is printed.
    void clear();

private:
    std::size_t total_;
    bool isActive_;
    bool isShown_ = false;
};

}  // namespace tool
