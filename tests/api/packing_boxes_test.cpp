// The rectangles of packed elements against the pixels that drawing them paints.

#include <algorithm>
#include <string>

#include "library_fixture.h"
#include "random_drawing.h"

namespace {

/// Ends are not included.
struct PixelBox {
    uint32_t left, top, right, bottom;

    bool operator==(const PixelBox&) const = default;
};

PixelBox boxOf(const QuorPackedRect& rect) {
    return {rect.x, rect.y, rect.x + rect.width, rect.y + rect.height};
}

PixelBox paintedBox(uint32_t surface) {
    const uint32_t* pixel = quorSurfacePixels(surface);
    PixelBox box = {~0U, ~0U, 0, 0};
    for (uint32_t y = 0; y < quorSurfaceHeight(surface); ++y) {
        for (uint32_t x = 0; x < quorSurfaceWidth(surface); ++x, ++pixel) {
            if (*pixel >> 24 == 0) continue;
            box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1),
                   std::max(box.bottom, y + 1)};
        }
    }
    return box;
}

/// Packs elements into one bin each as far as they fit there, and draws one at a time.
class PackingBoxes : public LibraryFixture {
protected:
    /// Counts the elements, and those whose rectangle is not exactly what is painted.
    void check(const std::string& text, uint32_t explodeGroups) {
        const uint32_t document = quorDocCreate(text.c_str());
        uint32_t info[3];
        ASSERT_EQ(QUOR_NO_ERROR, quorPackingBegin(160, 3, 0, 0.75F));
        ASSERT_EQ(QUOR_NO_ERROR, quorPackingAdd(document, explodeGroups, 1.0F, info));
        ASSERT_EQ(QUOR_NO_ERROR, quorPackingEnd(1));
        for (uint32_t bin = 0; bin < quorPackingBinsCount(); ++bin) checkBin(bin);
        quorDocDestroy(document);
    }

    int count_ = 0;
    int loose_ = 0;

private:
    void checkBin(uint32_t bin) {
        uint32_t info[3];
        ASSERT_EQ(QUOR_NO_ERROR, quorPackingBinInfo(bin, info));
        const uint32_t surface = quorSurfaceCreate(info[0], info[1]);
        for (uint32_t i = 0; i < info[2]; ++i) {
            ASSERT_EQ(QUOR_NO_ERROR, quorPackingDraw(bin, i, 1, surface, 2));
            const PixelBox rect = boxOf(quorPackingBinRects(bin)[i]);
            const PixelBox painted = paintedBox(surface);
            EXPECT_TRUE(rect.left <= painted.left && rect.top <= painted.top &&
                        painted.right <= rect.right && painted.bottom <= rect.bottom)
                << "element " << i << " of bin " << bin << ": " << rect.left << ' ' << rect.top
                << ' ' << rect.right << ' ' << rect.bottom << " painted " << painted.left << ' '
                << painted.top << ' ' << painted.right << ' ' << painted.bottom;
            ++count_;
            loose_ += painted != rect ? 1 : 0;
        }
        quorSurfaceDestroy(surface);
    }
};

TEST_F(PackingBoxes, AreExactlyWhatIsPainted) {
    uint32_t seed = 1;
    for (; count_ < 2000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        check(RandomDrawing(seed).text(), 1);
    }
    // At another place the last bit of a coordinate may be rounded the other way.
    EXPECT_LE(loose_, 8) << "of " << count_ << " in " << seed << " drawings";
}

TEST_F(PackingBoxes, LeaveOutWhatPaintsNothing) {
    const char* const cases[] = {
        "<path d='M0 0h24v24H0z' fill='none'/>",
        "<path d='M0 0h24v24H0z' fill='none' stroke='red' stroke-width='0'/>",
        "<rect width='9' height='9' fill-opacity='0'/>",
        "<rect width='9' height='9' visibility='hidden'/>",
        "<rect width='9' height='9' fill='url(#nothing)'/>",
        ("<linearGradient id='g'><stop stop-opacity='0'/></linearGradient>"
         "<rect width='9' height='9' fill='url(#g)'/>"),
        "<path d='M1 1H9M2 2L7 7Z'/>",
        "<rect width='9' height='9' transform='scale(1,0)' stroke='red'/>",
        "<text>words</text>",
    };
    for (const char* content : cases) {
        SCOPED_TRACE(content);
        for (const uint32_t explodeGroups : {0U, 1U}) {
            count_ = 0;
            check(svgOf(24, 24, content), explodeGroups);
            EXPECT_EQ(0, count_);
            // Nor does it count in a group.
            const std::string group = svgOf(
                24, 24,
                "<g>" + std::string(content) + "<rect x='3' y='5' width='4' height='4'/></g>");
            check(group, 0);
            EXPECT_EQ(1, count_);
            EXPECT_EQ(4U, quorPackingBinRects(0)[0].width);
        }
    }
}

}  // namespace
