// Loading documents, beside what the XML library alone takes for the same texts.

#include <benchmark/benchmark.h>
#include <tinyxml2.h>

#include "quor/quor.h"
#include "sample_files.h"

namespace quor::bench {
namespace {

int64_t totalBytes() {
    int64_t bytes = 0;
    for (const SampleFile& file : sampleFiles()) bytes += static_cast<int64_t>(file.text.size());
    return bytes;
}

void parseXmlOnly(benchmark::State& state) {
    for (auto _ : state) {
        for (const SampleFile& file : sampleFiles()) {
            tinyxml2::XMLDocument document;
            benchmark::DoNotOptimize(document.Parse(file.text.c_str()));
        }
    }
    state.SetBytesProcessed(state.iterations() * totalBytes());
}
BENCHMARK(parseXmlOnly)->Name("load/xml_parse_only");

void loadDocuments(benchmark::State& state) {
    quorInit(1024, 1024, 96.0F);
    for (auto _ : state) {
        for (const SampleFile& file : sampleFiles()) {
            const uint32_t document = quorDocCreate(file.text.c_str());
            benchmark::DoNotOptimize(document);
            quorDocDestroy(document);
        }
    }
    quorDone();
    state.SetBytesProcessed(state.iterations() * totalBytes());
}
BENCHMARK(loadDocuments)->Name("load/documents");

}  // namespace
}  // namespace quor::bench
