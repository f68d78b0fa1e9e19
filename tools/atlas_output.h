#pragma once

#include <set>
#include <string>

namespace tool {

/// The files of a run: each is written beside its place and renamed into it, so that no one reads
/// half a file, and what earlier runs with the same -o wrote and this one did not is removed.
class AtlasOutput {
public:
    /// `output` is folder and beginning of the names. FileError when the folder is not there.
    explicit AtlasOutput(const std::string& output);

    /// Where a file is to be written before commit(). `name` is without folder.
    std::string temporaryPath(const std::string& name) const;
    /// Puts it in place.
    void commit(const std::string& name);
    /// Both at once.
    void write(const std::string& name, const std::string& text);
    /// A file that was written.
    std::string read(const std::string& name) const;

    /// To be called when everything is written.
    void removeStale() const;

private:
    bool isOurs(const std::string& name) const;

    std::string folder_;  ///< "" or ending in '/'
    std::string base_;
    std::set<std::string> written_;
};

}  // namespace tool
