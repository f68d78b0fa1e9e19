// Reading path data: the `d` attributes of the drawings, one after the other.

#include <benchmark/benchmark.h>

#include "sample_files.h"
#include "svg/path_data.h"

namespace quor::bench {
namespace {

/// What stands between the quotes of each attribute ` d=`.
std::vector<std::string> pathTexts() {
    std::vector<std::string> found;
    for (const SampleFile& file : sampleFiles()) {
        for (size_t at = file.text.find(" d=\""); at != std::string::npos;
             at = file.text.find(" d=\"", at)) {
            const size_t first = at + 4;
            at = file.text.find('"', first);
            if (at == std::string::npos) break;
            found.push_back(file.text.substr(first, at - first));
        }
    }
    return found;
}

void readPathData(benchmark::State& state) {
    const std::vector<std::string> texts = pathTexts();
    int64_t bytes = 0;
    for (const std::string& text : texts) bytes += static_cast<int64_t>(text.size());
    PathData data;
    for (auto _ : state) {
        for (const std::string& text : texts) {
            benchmark::DoNotOptimize(parsePathData(text.c_str(), data));
        }
    }
    state.SetBytesProcessed(state.iterations() * bytes);
}
BENCHMARK(readPathData)->Name("load/path_data");

}  // namespace
}  // namespace quor::bench
