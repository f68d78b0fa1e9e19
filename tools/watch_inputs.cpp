#include "watch_inputs.h"

#include <algorithm>

#include "file_watch.h"

namespace tool {

void watchInputs(const std::vector<std::string>& named,
                 const std::function<void(const std::vector<FoundFile>&)>& work) {
    FileWatch watch({});  // to which all files are new at first
    for (;;) {
        std::vector<FoundFile> inputs = findDrawings(named);
        std::vector<std::string> paths;
        paths.reserve(inputs.size());
        for (const FoundFile& input : inputs) paths.push_back(input.path);
        const std::vector<std::string> changes = watch.changesSince(paths);
        std::erase_if(inputs, [&changes](const FoundFile& input) {
            return std::find(changes.begin(), changes.end(), input.path) == changes.end();
        });
        if (!inputs.empty()) work(inputs);
        FileWatch::pause();
    }
}

}  // namespace tool
