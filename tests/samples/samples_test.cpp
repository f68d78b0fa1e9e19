// Draws each drawing of samples/ and compares it with its reference: a picture on which at least
// two of three independent renderers agree. bench/peers/make_references.py made references/, once;
// index.txt there names each with the renderers and the limits that they need among themselves,
// without.txt the drawings that have none, with the reason.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "picture.h"
#include "quor/quor.h"

namespace {

struct Sample {
    std::string name;
    double changedLimit;  ///< as in Difference
    double meanLimit;
    double tintLimit;
    std::string renderers;  ///< that agree
};

void PrintTo(const Sample& sample, std::ostream* out) { *out << sample.name; }

std::vector<Sample> readIndex() {
    std::ifstream file(QUOR_REFERENCES_FOLDER "/index.txt");
    std::vector<Sample> samples;
    for (Sample s; file >> s.name >> s.changedLimit >> s.meanLimit >> s.tintLimit >> s.renderers;)
        samples.push_back(s);
    return samples;
}

std::string readSample(const std::string& name) {
    std::ifstream file(QUOR_SAMPLES_FOLDER "/" + name + ".svg", std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

Picture draw(const std::string& text, int width, int height) {
    EXPECT_EQ(QUOR_NO_ERROR, quorInit(640, 480, 96.0F));
    const QuorDocument document = quorDocCreate(text.c_str());
    const QuorSurface surface =
        quorSurfaceCreate(static_cast<uint32_t>(width), static_cast<uint32_t>(height));
    EXPECT_EQ(QUOR_NO_ERROR, quorDocDraw(document, surface, QUOR_RENDERING_QUALITY_BETTER));
    Picture picture{width, height, std::vector<uint32_t>(static_cast<size_t>(width * height))};
    EXPECT_EQ(QUOR_NO_ERROR, quorSurfaceCopy(surface, picture.pixels.data(), 0));
    quorDone();
    return picture;
}

class Samples : public ::testing::TestWithParam<Sample> {};

TEST_P(Samples, LooksAsOtherRenderersDrawIt) {
    const Sample& sample = GetParam();
    const Picture reference = readPng(QUOR_REFERENCES_FOLDER "/" + sample.name + ".png");
    ASSERT_FALSE(reference.pixels.empty());
    const Picture drawn = draw(readSample(sample.name), reference.width, reference.height);
    const Difference difference = differenceOf(drawn, reference);
    EXPECT_TRUE(difference.isWithin(sample.changedLimit, sample.meanLimit, sample.tintLimit))
        << "changed " << difference.changed << " of " << sample.changedLimit << ", mean "
        << difference.mean << " of " << sample.meanLimit << ", solid " << difference.solid
        << ", tint " << difference.tint << " of " << sample.tintLimit;
}

INSTANTIATE_TEST_SUITE_P(Drawings, Samples, ::testing::ValuesIn(readIndex()),
                         [](const ::testing::TestParamInfo<Sample>& sample) {
                             std::string name = sample.param.name;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

TEST(SampleReferences, CoverEveryDrawing) {
    std::set<std::string> covered;
    for (const Sample& sample : readIndex()) covered.insert(sample.name);
    std::ifstream without(QUOR_REFERENCES_FOLDER "/without.txt");
    for (std::string name, reason; without >> name && std::getline(without, reason);) {
        EXPECT_TRUE(covered.insert(name).second && reason.size() > 10) << name;
    }
    std::set<std::string> drawings;
    for (const auto& entry : std::filesystem::directory_iterator(QUOR_SAMPLES_FOLDER)) {
        if (entry.path().extension() == ".svg") drawings.insert(entry.path().stem().string());
    }
    EXPECT_EQ(covered, drawings);
}

}  // namespace
