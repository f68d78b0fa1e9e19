#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "quor/quor.h"

/// The library initialised for a screen of 640 x 480 pixels at 96 dots per inch.
class LibraryFixture : public ::testing::Test {
protected:
    LibraryFixture() {
        quorClearPerform(1);
        EXPECT_EQ(QUOR_NO_ERROR, quorInit(640, 480, 96.0F));
    }
    ~LibraryFixture() override { quorDone(); }
};

/// An `svg` element of the given size in user units around the content.
inline std::string svgOf(int width, int height, const std::string& content) {
    return "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' "
           "viewBox='0 0 " +
           std::to_string(width) + ' ' + std::to_string(height) + "'>" + content + "</svg>";
}

/// A surface and a document of the same size, one pixel a user unit.
class Picture {
public:
    Picture(int width, int height, const std::string& content)
        : width_(width),
          height_(height),
          surface_(quorSurfaceCreate(static_cast<uint32_t>(width), static_cast<uint32_t>(height))),
          document_(quorDocCreate(svgOf(width, height, content).c_str())) {
        EXPECT_NE(QUOR_INVALID_HANDLE, surface_);
        EXPECT_NE(QUOR_INVALID_HANDLE, document_);
    }
    Picture(const Picture&) = delete;
    Picture& operator=(const Picture&) = delete;
    ~Picture() {
        quorDocDestroy(document_);
        quorSurfaceDestroy(surface_);
    }

    uint32_t draw(uint32_t quality = QUOR_RENDERING_QUALITY_BETTER) const {
        return quorDocDraw(document_, surface_, quality);
    }
    uint32_t at(int x, int y) const { return quorSurfacePixels(surface_)[y * width_ + x]; }
    uint32_t surface() const { return surface_; }
    uint32_t document() const { return document_; }

    /// The pixels, a letter each, rows separated by '/': '.' transparent, K black, W white, R red,
    /// G lime, B blue; lower case: at half opacity; '?' anything else.
    std::string letters() const {
        std::string text;
        for (int y = 0; y < height_; ++y) {
            if (y > 0) text += '/';
            for (int x = 0; x < width_; ++x) text += letterOf(at(x, y));
        }
        return text;
    }

private:
    static char letterOf(uint32_t pixel) {
        switch (pixel) {
            case 0x00000000:
                return '.';
            case 0xFF000000:
                return 'K';
            case 0xFFFFFFFF:
                return 'W';
            case 0xFFFF0000:
                return 'R';
            case 0xFF00FF00:
                return 'G';
            case 0xFF0000FF:
                return 'B';
            case 0x80000000:
                return 'k';
            case 0x80800000:
                return 'r';
            case 0x80008000:
                return 'g';
            case 0x80000080:
                return 'b';
            default:
                return '?';
        }
    }

    int width_;
    int height_;
    uint32_t surface_;
    uint32_t document_;
};

/// What a small document looks like; see Picture::letters().
struct LetterCase {
    const char* name;
    const char* content;  ///< of a document of 4 x 2 units
    const char* letters;
};

inline void expectLetters(const LetterCase& c) {
    SCOPED_TRACE(c.name);
    const Picture picture(4, 2, c.content);
    EXPECT_EQ(QUOR_NO_ERROR, picture.draw());
    EXPECT_EQ(c.letters, picture.letters());
}
