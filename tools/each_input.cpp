#include "each_input.h"

#include <cstdio>

#include "folder_walk.h"
#include "library_error.h"

namespace tool {

bool forEachInput(const std::vector<std::string>& named,
                  const std::function<void(const std::string& path)>& work) {
    bool isSuccess = true;
    for (const FoundFile& input : findDrawings(named)) {
        try {
            work(input.path);
        } catch (const FileError& error) {
            std::fflush(stdout);  // what was printed before comes before
            report(input.path, error);
            isSuccess = false;
        }
    }
    return isSuccess;
}

}  // namespace tool
