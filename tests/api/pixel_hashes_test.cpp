// Pixels are the same on every machine, with every compiler, level of optimisation and vector
// level: pixel_hashes.txt holds a hash of each of 100 drawings (those of samples/, the rest random)
// at three qualities and three sizes. Whoever changes pixels on purpose makes the file anew:
//
//     QUOR_WRITE_HASHES=1 build/dev/tests/api_tests --gtest_filter='PixelHashes*'

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <vector>

#include "library_fixture.h"
#include "random_drawing.h"
#include "vg/raster/kernels/kernels.h"

namespace {

using vg::raster::KernelLevel;

constexpr int kDrawings = 100;
constexpr uint32_t kSizes[] = {40, 160, 500};
constexpr uint32_t kQualities[] = {QUOR_RENDERING_QUALITY_NONANTIALIASED,
                                   QUOR_RENDERING_QUALITY_FASTER, QUOR_RENDERING_QUALITY_BETTER};

struct Drawing {
    std::string name;
    std::string text;
};

std::vector<Drawing> drawings() {
    std::vector<Drawing> all;
    for (const auto& entry : std::filesystem::directory_iterator(QUOR_SAMPLES_FOLDER)) {
        if (entry.path().extension() != ".svg") continue;
        std::ifstream stream(entry.path(), std::ios::binary);
        all.push_back({entry.path().stem().string(), {std::istreambuf_iterator<char>(stream), {}}});
    }
    std::sort(all.begin(), all.end(),
              [](const Drawing& a, const Drawing& b) { return a.name < b.name; });
    for (uint32_t seed = 1; all.size() < kDrawings; ++seed) {
        all.push_back({"random-" + std::to_string(seed), RandomDrawing(seed).text()});
    }
    return all;
}

/// FNV-1a, 64 bits, over the pixels as words.
uint64_t hashOf(const uint32_t* pixels, uint32_t count) {
    uint64_t hash = 0xCBF29CE484222325;
    for (uint32_t i = 0; i < count; ++i) hash = (hash ^ pixels[i]) * 0x100000001B3;
    return hash;
}

/// A document that has never been drawn before on a clear surface: nothing is kept from elsewhere.
uint64_t drawnHash(const Drawing& drawing, uint32_t quality, uint32_t size) {
    const uint32_t surface = quorSurfaceCreate(size, size);
    const uint32_t document = quorDocCreate(drawing.text.c_str());
    EXPECT_EQ(QUOR_NO_ERROR, quorDocDraw(document, surface, quality)) << drawing.name;
    const uint64_t hash = hashOf(quorSurfacePixels(surface), size * size);
    quorDocDestroy(document);
    quorSurfaceDestroy(surface);
    return hash;
}

using Hashes = std::map<std::string, uint64_t>;  // by "drawing quality size"

Hashes drawAll() {
    Hashes hashes;
    for (const Drawing& drawing : drawings()) {
        for (const uint32_t quality : kQualities) {
            for (const uint32_t size : kSizes) {
                hashes[drawing.name + ' ' + std::to_string(quality) + ' ' + std::to_string(size)] =
                    drawnHash(drawing, quality, size);
            }
        }
    }
    return hashes;
}

Hashes readHashes() {
    Hashes hashes;
    std::ifstream file(QUOR_PIXEL_HASHES);
    std::string name, quality, size;
    uint64_t hash = 0;
    while (file >> name >> quality >> size >> std::hex >> hash >> std::dec) {
        hashes[name + ' ' + quality + ' ' + size] = hash;
    }
    return hashes;
}

void writeHashes(const Hashes& hashes) {
    std::ofstream file(QUOR_PIXEL_HASHES);
    for (const auto& [key, hash] : hashes) file << key << ' ' << std::hex << hash << '\n';
}

class PixelHashes : public LibraryFixture {};

TEST_F(PixelHashes, AreThoseOfEveryOtherMachine) {
    if (std::getenv("QUOR_WRITE_HASHES") != nullptr) writeHashes(drawAll());
    const Hashes expected = readHashes();
    ASSERT_EQ(900U, expected.size());
    for (const KernelLevel level : vg::raster::kKernelLevels) {
        if (!vg::raster::useKernelLevel(level)) continue;  // not on this processor
        for (const auto& [key, hash] : drawAll()) {
            const auto found = expected.find(key);
            EXPECT_TRUE(found != expected.end() && found->second == hash)
                << key << " (quality, size), kernels " << nameOf(level);
        }
    }
    vg::raster::useKernelLevel(vg::raster::bestKernelLevel());
}

}  // namespace
