#include "atlas_output.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "atlas.h"
#include "file_error.h"

namespace tool {

namespace {

namespace fs = std::filesystem;

bool writeBytes(const std::string& path, const std::string& bytes) {
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) return false;
    const bool isWritten = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    return std::fclose(file) == 0 && isWritten;
}

[[noreturn]] void throwUnwritable(const std::string& path, int error) {
    throw FileError("cannot write " + path + ": " + std::strerror(error) +
                    "; choose another place with -o");
}

bool isDescription(const fs::path& path) {
    const std::string ending = path.extension().string();
    return ending == ".json" || ending == ".atlas" || ending == ".css";
}

std::string bytesOf(const fs::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace

AtlasOutput::AtlasOutput(const std::string& output) {
    const fs::path folder = fs::path(output).parent_path();
    base_ = fs::path(output).filename().string();
    if (!folder.empty()) folder_ = folder.string() + '/';
    std::error_code ignored;
    if (!folder.empty() && !fs::is_directory(folder, ignored)) {
        throw FileError(folder.string() + ": there is no such folder; create it with: mkdir -p " +
                        folder.string());
    }
    if (base_.empty()) throw FileError(output + ": name the sheets too: -o " + output + "sheet");
}

std::string AtlasOutput::temporaryPath(const std::string& name) const {
    return folder_ + '.' + name + ".part";
}

void AtlasOutput::commit(const std::string& name) {
    if (std::rename(temporaryPath(name).c_str(), (folder_ + name).c_str()) != 0)
        throwUnwritable(folder_ + name, errno);
    written_.insert(name);
}

void AtlasOutput::write(const std::string& name, const std::string& text) {
    if (!writeBytes(temporaryPath(name), text)) throwUnwritable(folder_ + name, errno);
    commit(name);
}

std::string AtlasOutput::read(const std::string& name) const { return bytesOf(folder_ + name); }

/// SHEET.json, SHEET-1.png, SHEET@2x.css, but not SHEETS.json.
bool AtlasOutput::isOurs(const std::string& name) const {
    if (!name.starts_with(base_) || name.size() == base_.size()) return false;
    return std::strchr(".-@", name[base_.size()]) != nullptr;
}

void AtlasOutput::removeStale() const {
    std::set<std::string> stale;
    std::error_code error;
    for (fs::directory_iterator entry(folder_.empty() ? "." : folder_, error), end;
         !error && entry != end; entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        if (!isOurs(name) || !isDescription(name) || written_.contains(name)) continue;
        const std::vector<std::string> listed = filesListedIn(bytesOf(entry->path()));
        stale.insert(listed.begin(), listed.end());
        if (!listed.empty()) stale.insert(name);
    }
    for (const std::string& name : stale)
        if (isOurs(name) && !written_.contains(name) && name.find('/') == std::string::npos)
            std::remove((folder_ + name).c_str());
}

}  // namespace tool
