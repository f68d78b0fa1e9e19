#include "vg/config_file.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <string>

namespace vg {
namespace {

/// A file of the given text for as long as the object lives.
class TextFile {
public:
    explicit TextFile(const std::string& text) {
        const int descriptor = mkstemp(path_);
        EXPECT_EQ(write(descriptor, text.data(), text.size()), static_cast<ssize_t>(text.size()));
        close(descriptor);
    }
    TextFile(const TextFile&) = delete;
    TextFile& operator=(const TextFile&) = delete;
    ~TextFile() { std::remove(path_); }
    const char* path() const { return path_; }

private:
    char path_[32] = "/tmp/engine_config_XXXXXX";
};

Configuration read(const std::string& text) {
    const TextFile file(text);
    Configuration configuration;
    configuration.maxCachingBoxWidth = 77;  // the reader starts from the defaults
    EXPECT_TRUE(readConfiguration(configuration, file.path()));
    return configuration;
}

TEST(ConfigFile, AMissingFileLeavesTheDefaults) {
    for (const char* path : {static_cast<const char*>(nullptr), "/nonexistent/calvanevg.ini"}) {
        Configuration configuration;
        configuration.curvesTolerance = 7.0F;
        configuration.allowVerticalSnapBetter = true;
        EXPECT_FALSE(readConfiguration(configuration, path));
        EXPECT_FLOAT_EQ(configuration.curvesTolerance, 0.0249F);
        EXPECT_EQ(configuration.maxCachingBoxWidth, 128);
        EXPECT_EQ(configuration.maxCachingBoxHeight, 128);
        EXPECT_FALSE(configuration.allowVerticalSnapBetter);
        EXPECT_TRUE(configuration.allowVerticalSnapFaster);
        EXPECT_TRUE(configuration.allowVerticalSnapNonAntialiased);
    }
}

TEST(ConfigFile, LinesAreAKeyAndAValueSeparatedByWhiteSpace) {
    const struct {
        const char* text;
        int32_t width;
    } cases[] = {
        {"", 128},
        {"maxcachingboxwidth 300", 300},
        {" \t\r MaxCachingBoxWidth \t +300 and more\r\n", 300},
        {"MAXCACHINGBOXWIDTH=300", 128},
        {"MAXCACHINGBOXWIDTH", 128},
        {"MAXCACHINGBOXWIDTH\n300", 128},
        {"MAXCACHINGBOXWIDTHS 300", 128},
        {";MAXCACHINGBOXWIDTH 300", 128},
        {"; MAXCACHINGBOXWIDTH 300", 128},
        {"garbage\n\n# x\nMAXCACHINGBOXWIDTH 1\nMAXCACHINGBOXWIDTH 2\n", 2},
        {"MAXCACHINGBOXWIDTH 0", 0},
        {"MAXCACHINGBOXWIDTH 4096", 4096},
        {"MAXCACHINGBOXWIDTH 4097", 128},
        {"MAXCACHINGBOXWIDTH -5", 128},
        {"MAXCACHINGBOXWIDTH 000071", 7},
        {"MAXCACHINGBOXWIDTH 12x4", 12},
        {"MAXCACHINGBOXWIDTH x", 0},
        {"MAXCACHINGBOXWIDTH \v\f9", 9},
    };
    for (const auto& c : cases) EXPECT_EQ(read(c.text).maxCachingBoxWidth, c.width) << c.text;
    EXPECT_EQ(read("MAXCACHINGBOXHEIGHT 1234567").maxCachingBoxHeight, 128);
    EXPECT_EQ(read("MAXCACHINGBOXHEIGHT 64").maxCachingBoxHeight, 64);
}

TEST(ConfigFile, LongLinesAndBinaryContentAreHarmless) {
    const std::string longLine(100000, 'A');
    EXPECT_EQ(read(longLine + "\nMAXCACHINGBOXWIDTH 5\n").maxCachingBoxWidth, 5);
    // A line is cut after 254 characters, and the rest counts as a line of its own.
    EXPECT_EQ(read(std::string(254, ' ') + "MAXCACHINGBOXWIDTH 6").maxCachingBoxWidth, 6);
    EXPECT_EQ(read(std::string("\0\xFF\x80 1\nMAXCACHINGBOXWIDTH 7", 26)).maxCachingBoxWidth, 7);
    Configuration configuration;
    readConfiguration(configuration, "/");
    EXPECT_EQ(configuration.maxCachingBoxWidth, 128);
}

TEST(ConfigFile, FlagsAreTrueOrFalseAsWholeWords) {
    const Configuration set = read(
        "allowVerticalSnapToPixelBetter true\n"
        "allowVerticalSnapToPixelFaster FALSE\n"
        "allowVerticalSnapToPixelNoAA false\n");
    EXPECT_TRUE(set.allowVerticalSnapBetter);
    EXPECT_FALSE(set.allowVerticalSnapFaster);
    EXPECT_FALSE(set.allowVerticalSnapNonAntialiased);
    for (const char* value : {"0", "FALSEHOOD", "no", "FALS"}) {
        EXPECT_TRUE(read(std::string("ALLOWVERTICALSNAPTOPIXELNOAA ") + value)
                        .allowVerticalSnapNonAntialiased);
    }
}

TEST(ConfigFile, CurvesQualityBecomesATolerance) {
    const struct {
        const char* value;
        float tolerance;
    } cases[] = {{"100", 0.01F},  {"90", 0.0249F}, {"50", 0.3825F}, {"0", 1.5F},
                 {"1000", 0.01F}, {"250", 0.01F},  {"-7", 1.5F},    {"00501", 0.3825F}};
    for (const auto& c : cases) {
        EXPECT_FLOAT_EQ(read(std::string("CURVESQUALITY ") + c.value).curvesTolerance, c.tolerance)
            << c.value;
    }
}

}  // namespace
}  // namespace vg
