#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace quor::bench {

struct SampleFile {
    std::string name;  ///< without folder and ending
    std::string text;
};

/// The drawings of samples/, or of the folder that the variable QUOR_BENCH_FOLDER names, by name.
inline const std::vector<SampleFile>& sampleFiles() {
    static const std::vector<SampleFile> files = [] {
        const char* chosen = std::getenv("QUOR_BENCH_FOLDER");
        const std::filesystem::path folder = chosen != nullptr ? chosen : QUOR_SAMPLES_FOLDER;
        std::vector<SampleFile> found;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
            if (entry.path().extension() != ".svg") continue;
            std::ifstream stream(entry.path(), std::ios::binary);
            found.push_back(
                {entry.path().stem().string(), {std::istreambuf_iterator<char>(stream), {}}});
        }
        std::sort(found.begin(), found.end(),
                  [](const SampleFile& a, const SampleFile& b) { return a.name < b.name; });
        return found;
    }();
    return files;
}

}  // namespace quor::bench
