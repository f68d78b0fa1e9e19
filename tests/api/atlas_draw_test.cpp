// Packed elements against the same elements drawn by themselves.

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include "library_fixture.h"

namespace {

/// The sheet of the packing's only bin.
class Sheet {
public:
    Sheet() {
        EXPECT_EQ(QUOR_NO_ERROR, quorPackingBinInfo(0, info_));
        surface_ = quorSurfaceCreate(info_[0], info_[1]);
    }
    Sheet(const Sheet&) = delete;
    Sheet& operator=(const Sheet&) = delete;
    ~Sheet() { quorSurfaceDestroy(surface_); }

    uint32_t draw(uint32_t first, uint32_t count, uint32_t quality = 2) const {
        return quorPackingDraw(0, first, count, surface_, quality);
    }
    uint32_t at(uint32_t x, uint32_t y) const {
        return quorSurfacePixels(surface_)[y * width() + x];
    }
    uint32_t width() const { return info_[0]; }
    uint32_t height() const { return info_[1]; }
    uint32_t count() const { return info_[2]; }
    uint32_t surface() const { return surface_; }

private:
    uint32_t info_[3] = {};
    uint32_t surface_;
};

void pack(uint32_t document, uint32_t explodeGroups, uint32_t border, float scale) {
    uint32_t info[2];
    ASSERT_EQ(QUOR_NO_ERROR, quorPackingBegin(1024, border, 0, scale));
    ASSERT_EQ(QUOR_NO_ERROR, quorPackingAdd(document, explodeGroups, 1.0F, info));
    ASSERT_EQ(QUOR_NO_ERROR, quorPackingEnd(1));
}

/// A surface of the element's size plus a frame of `margin` pixels on which the whole document,
/// which holds nothing else, is drawn as `quorDocDraw` does it.
class Alone {
public:
    Alone(const std::string& text, const QuorPackedRect& rect, uint32_t quality) {
        width_ = rect.width + 2 * kMargin;
        const uint32_t height = rect.height + 2 * kMargin;
        surface_ = quorSurfaceCreate(width_, height);
        const uint32_t document = quorDocCreate(text.c_str());
        const float margin = static_cast<float>(kMargin);
        const float viewport[4] = {(static_cast<float>(rect.originX) - margin) / rect.scale,
                                   (static_cast<float>(rect.originY) - margin) / rect.scale,
                                   static_cast<float>(width_) / rect.scale,
                                   static_cast<float>(height) / rect.scale};
        EXPECT_EQ(QUOR_NO_ERROR, quorDocViewportSet(document, viewport));
        EXPECT_EQ(QUOR_NO_ERROR, quorDocDraw(document, surface_, quality));
        quorDocDestroy(document);
    }
    Alone(const Alone&) = delete;
    Alone& operator=(const Alone&) = delete;
    ~Alone() { quorSurfaceDestroy(surface_); }

    uint32_t at(uint32_t x, uint32_t y) const {
        return quorSurfacePixels(surface_)[(y + kMargin) * width_ + x + kMargin];
    }
    static constexpr uint32_t kMargin = 3;

private:
    uint32_t width_;
    uint32_t surface_;
};

/// A point of a curve that lies next to the middle of two steps of 1/32 pixel may be rounded the
/// other way at another place: up to 8 levels at its edge.
bool isSame(uint32_t a, uint32_t b) {
    for (int shift = 0; shift < 32; shift += 8) {
        const int difference =
            static_cast<int>(a >> shift & 255U) - static_cast<int>(b >> shift & 255U);
        if (std::abs(difference) > 8) return false;
    }
    return true;
}

void expectSamePixels(const Sheet& sheet, const QuorPackedRect& rect, const Alone& alone) {
    uint32_t rounded = 0;
    for (uint32_t y = 0; y < rect.height; ++y) {
        for (uint32_t x = 0; x < rect.width; ++x) {
            const uint32_t expected = alone.at(x, y);
            const uint32_t pixel = sheet.at(rect.x + x, rect.y + y);
            rounded += pixel != expected ? 1 : 0;
            ASSERT_TRUE(isSame(pixel, expected)) << rect.id << " at " << x << ',' << y;
        }
    }
    EXPECT_LE(rounded, 8U) << rect.id;
}

struct Element {
    const char* before;  ///< what it is inside of
    const char* element;
    const char* after;
};

// Transforms are exact in binary so that a shift by whole pixels changes no rounding.
constexpr Element kElements[] = {
    {"", "<rect id='plain' x='3' y='2' width='20' height='11' fill='teal'/>", ""},
    {"", "<circle id='round' cx='40.25' cy='30.5' r='9.75' fill-opacity='.5'/>", ""},
    {"<g fill='red' transform='translate(7.5,3)'><g transform='matrix(2,0.5,-0.5,1.5,4,8)'>",
     "<path id='deep' d='M0 0 L9 2 Q12 9 3 12 Z'/>", "</g></g>"},
    {"<g color='olive' visibility='visible' fill-rule='evenodd'>",
     "<path id='styled' fill='currentColor' d='M0 0H30V30H0Z M8 8H22V22H8Z'/>", "</g>"},
    {"<svg x='8' y='8' width='32' height='16' viewBox='0 0 8 4'>",
     "<ellipse id='nested' cx='4' cy='2' rx='3' ry='1.5' fill='navy'/>", "</svg>"},
    {"<g transform='scale(0.5)'>", "<use id='copied' xlink:href='#shared' x='16' y='-8'/>", "</g>"},
    {"", "<polygon id='behind' points='-20,-30 -5,-28 -11,-9' fill='gold'/>", ""},
};

constexpr const char* kShared =
    "<defs><g id='shared'><rect width='12' height='12' fill='lime'/>"
    "<circle cx='20' cy='20' r='9' fill='#123'/></g></defs>";

std::string textOf(const std::string& content) {
    return "<svg xmlns:xlink='x' transform='translate(2,4)' viewBox='0 0 64 64'>" +
           (kShared + content) + "</svg>";
}

std::string textOfAll() {
    std::string content;
    for (const Element& e : kElements) content += std::string(e.before) + e.element + e.after;
    return textOf(content);
}

using PackingDraw = LibraryFixture;

TEST_F(PackingDraw, GivesThePixelsOfEachElementAlone) {
    const uint32_t document = quorDocCreate(textOfAll().c_str());
    for (const float scale : {1.0F, 4.0F, 0.5F}) {
        pack(document, 1, 2, scale);
        const Sheet sheet;
        ASSERT_EQ(std::size(kElements), sheet.count());
        for (const uint32_t quality : {0U, 1U, 2U}) {
            ASSERT_EQ(QUOR_NO_ERROR, sheet.draw(0, sheet.count(), quality));
            for (uint32_t i = 0; i < sheet.count(); ++i) {
                const QuorPackedRect& rect = quorPackingBinRects(0)[i];
                const Element& e = kElements[i];
                const Alone alone(textOf(std::string(e.before) + e.element + e.after), rect,
                                  quality);
                SCOPED_TRACE(testing::Message() << "scale " << scale << " quality " << quality);
                expectSamePixels(sheet, rect, alone);
            }
        }
    }
}

TEST_F(PackingDraw, LeavesTheBorderFree) {
    // Each has strokes, joins and caps of the kinds that reach farthest.
    const std::string text =
        "<svg><g stroke='black' stroke-width='3'><path d='M5 5 L30 8 L5 11' fill='none'/>"
        "<path d='M0 0H9' stroke-linecap='square' transform='rotate(30)'/>"
        "<path d='M0 9 C9 -9 12 30 30 9' stroke-linejoin='round' stroke-linecap='round'/>"
        "<path d='M0 0L8 3L2 9Z' vector-effect='non-scaling-stroke' transform='scale(3,2)'/>"
        "<rect width='8' height='8' transform='skewX(30)' stroke-miterlimit='1'/></g></svg>";
    const uint32_t document = quorDocCreate(text.c_str());
    pack(document, 1, 6, 1.5F);
    const Sheet sheet;
    ASSERT_EQ(5U, sheet.count());
    ASSERT_EQ(QUOR_NO_ERROR, sheet.draw(0, 5));
    std::vector<bool> isAllowed(size_t{sheet.width()} * sheet.height());
    for (uint32_t i = 0; i < sheet.count(); ++i) {  // its rectangle, grown by a pixel
        const QuorPackedRect& rect = quorPackingBinRects(0)[i];
        for (uint32_t y = rect.y - 1; y <= rect.y + rect.height; ++y) {
            for (uint32_t x = rect.x - 1; x <= rect.x + rect.width; ++x) {
                isAllowed[size_t{y} * sheet.width() + x] = true;
            }
        }
    }
    for (uint32_t y = 0; y < sheet.height(); ++y) {
        for (uint32_t x = 0; x < sheet.width(); ++x) {
            if (!isAllowed[size_t{y} * sheet.width() + x]) {
                ASSERT_EQ(0x00000000U, sheet.at(x, y) & 0xFF000000U) << x << ',' << y;
            }
        }
    }
}

TEST_F(PackingDraw, DrawsTheRangeAskedForAndClearsLikeADocument) {
    const uint32_t document = quorDocCreate(
        "<svg><rect width='4' height='4' fill='red'/><rect width='4' height='4' fill='lime'/>"
        "<rect width='4' height='4' fill='blue'/></svg>");
    pack(document, 0, 1, 1.0F);
    const Sheet sheet;
    ASSERT_EQ(3U, sheet.count());
    const QuorPackedRect* rects = quorPackingBinRects(0);
    const auto pixelOf = [&](uint32_t i) { return sheet.at(rects[i].x, rects[i].y); };
    quorClearColor(0, 0, 0, 1);
    EXPECT_EQ(QUOR_NO_ERROR, sheet.draw(1, 2));
    EXPECT_EQ(0xFF000000U, pixelOf(0));
    EXPECT_EQ(0xFF00FF00U, pixelOf(1));
    EXPECT_EQ(0xFF0000FFU, pixelOf(2));
    quorClearPerform(0);
    EXPECT_EQ(QUOR_NO_ERROR, sheet.draw(0, 1));
    EXPECT_EQ(0xFFFF0000U, pixelOf(0));
    EXPECT_EQ(0xFF00FF00U, pixelOf(1)) << "still there";
}

TEST_F(PackingDraw, IgnoresWhereTheSurfacePutsDocuments) {
    const uint32_t document =
        quorDocCreate("<svg><rect x='9' width='3' height='3' fill='red'/></svg>");
    pack(document, 0, 1, 1.0F);
    const Sheet sheet;
    const float viewport[4] = {1, 1, 2, 2};
    const float transform[5] = {1, 1, 45, 3, 3};
    quorSurfaceViewportSet(sheet.surface(), viewport);
    quorSurfaceViewportTransformSet(sheet.surface(), transform);
    EXPECT_EQ(QUOR_NO_ERROR, sheet.draw(0, 1));
    EXPECT_EQ(0x00000000U, sheet.at(0, 2));
    EXPECT_EQ(0xFFFF0000U, sheet.at(1, 1));
    EXPECT_EQ(0xFFFF0000U, sheet.at(3, 3));
    EXPECT_EQ(0x00000000U, sheet.at(4, 4));
}

TEST_F(PackingDraw, CountsTargetsOfUseOverTheCall) {
    // Each of the 60 rectangles visits 11,111 targets: one call visits more than a walk may.
    std::string text = "<svg xmlns:xlink='x'><defs><rect id='l4' width='1' height='1'/>";
    for (int level = 3; level >= 0; --level) {
        text += "<g id='l" + std::to_string(level) + "'>";
        for (int i = 0; i < 10; ++i)
            text += "<use xlink:href='#l" + std::to_string(level + 1) + "'/>";
        text += "</g>";
    }
    text += "</defs><use xlink:href='#l0'/></svg>";
    const uint32_t document = quorDocCreate(text.c_str());
    ASSERT_EQ(QUOR_NO_ERROR, quorPackingBegin(256, 1, 0, 1.0F));
    uint32_t info[2];
    for (int i = 0; i < 60; ++i) ASSERT_EQ(QUOR_NO_ERROR, quorPackingAdd(document, 0, 1.0F, info));
    ASSERT_EQ(QUOR_NO_ERROR, quorPackingEnd(1));
    const Sheet sheet;
    EXPECT_EQ(QUOR_NO_ERROR, sheet.draw(0, 40));
    EXPECT_EQ(QUOR_INVALID_SVG_ERROR, sheet.draw(0, 60));
    EXPECT_EQ(QUOR_NO_ERROR, sheet.draw(20, 40));
}

}  // namespace
