#include <cmath>

#include "library_fixture.h"

namespace {

using PointMap = LibraryFixture;

struct Point {
    float x, y;
};

TEST_F(PointMap, FitsTheDocumentViewportIntoThatOfTheSurface) {
    const struct {
        const char* name;
        float viewport[4];  ///< of the surface; the document's is 0 0 100 50
        uint32_t alignment[2];
        Point from, to;
    } cases[] = {
        {"right", {0, 0, 300, 100}, {QUOR_ALIGN_XMAX_YMIN, QUOR_MEET}, {0, 0}, {100, 0}},
        {"left bottom", {10, 20, 100, 150}, {QUOR_ALIGN_XMIN_YMAX, QUOR_MEET}, {0, 0}, {10, 120}},
    };
    // All alignments are in ViewportMapping's tests.
    const uint32_t surface = quorSurfaceCreate(300, 300);
    const uint32_t document = quorDocCreate("<svg viewBox='0 0 100 50'/>");
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        ASSERT_EQ(QUOR_NO_ERROR, quorSurfaceViewportSet(surface, c.viewport));
        ASSERT_EQ(QUOR_NO_ERROR, quorDocViewportAlignmentSet(document, c.alignment));
        float mapped[2];
        ASSERT_EQ(QUOR_NO_ERROR, quorPointMap(document, surface, c.from.x, c.from.y, 1, mapped));
        EXPECT_EQ(c.to.x, mapped[0]);
        EXPECT_EQ(c.to.y, mapped[1]);
    }
}

TEST_F(PointMap, RotatesAboutThePivotAndThenTranslatesWhenAsked) {
    const uint32_t surface = quorSurfaceCreate(100, 100);
    const uint32_t document = quorDocCreate("<svg viewBox='0 0 100 100'/>");
    const struct {
        const char* name;
        float transform[5];
        uint32_t isUsed;
        Point from, to;
    } cases[] = {
        {"about the corner", {0, 0, 90, 0, 0}, 1, {10, 0}, {0, 10}},
        {"about a point", {50, 50, 180, 0, 0}, 1, {60, 50}, {40, 50}},
        {"translated afterwards", {0, 0, 90, 5, 7}, 2, {10, 0}, {5, 17}},
        {"left out", {50, 50, 180, 5, 7}, 0, {60, 50}, {60, 50}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        ASSERT_EQ(QUOR_NO_ERROR, quorSurfaceViewportTransformSet(surface, c.transform));
        float mapped[2];
        ASSERT_EQ(QUOR_NO_ERROR,
                  quorPointMap(document, surface, c.from.x, c.from.y, c.isUsed, mapped));
        EXPECT_NEAR(c.to.x, mapped[0], 1e-4);
        EXPECT_NEAR(c.to.y, mapped[1], 1e-4);
    }
}

TEST_F(PointMap, AgreesWithWhereADrawPutsAPixel) {
    const Picture picture(9, 9, "<rect x='6' y='2' width='1' height='1'/>");
    const float transform[5] = {4.5F, 4.5F, 90, -1, 1};
    ASSERT_EQ(QUOR_NO_ERROR, quorSurfaceViewportTransformSet(picture.surface(), transform));
    ASSERT_EQ(QUOR_NO_ERROR, picture.draw(QUOR_RENDERING_QUALITY_NONANTIALIASED));
    float center[2];
    ASSERT_EQ(QUOR_NO_ERROR,
              quorPointMap(picture.document(), picture.surface(), 6.5F, 2.5F, 1, center));
    for (int y = 0; y < 9; ++y) {
        for (int x = 0; x < 9; ++x) {
            const bool isPoint = x == static_cast<int>(std::floor(center[0])) &&
                                 y == static_cast<int>(std::floor(center[1]));
            EXPECT_EQ(isPoint ? 0xFF000000U : 0U, picture.at(x, y)) << x << ", " << y;
        }
    }
}

TEST_F(PointMap, GivesFiniteNumbersAlways) {
    const uint32_t surface = quorSurfaceCreate(100, 100);
    for (const char* text :
         {"<svg viewBox='none'/>", "<svg viewBox='9e37 1 1e-30 5'/>", "<svg viewBox='0 0 1 1'/>"}) {
        const uint32_t document = quorDocCreate(text);
        for (const float value : {NAN, INFINITY, -INFINITY, 3e38F}) {
            float mapped[2] = {NAN, NAN};
            EXPECT_EQ(QUOR_NO_ERROR, quorPointMap(document, surface, value, value, 1, mapped));
            EXPECT_TRUE(std::isfinite(mapped[0]) && std::isfinite(mapped[1])) << text << value;
        }
    }
}

TEST_F(PointMap, ChecksHandlesBeforeTheResult) {
    const uint32_t surface = quorSurfaceCreate(1, 1);
    const uint32_t document = quorDocCreate("<svg/>");
    EXPECT_EQ(QUOR_BAD_HANDLE_ERROR, quorPointMap(surface, surface, 0, 0, 0, nullptr));
    EXPECT_EQ(QUOR_BAD_HANDLE_ERROR, quorPointMap(document, document, 0, 0, 0, nullptr));
    EXPECT_EQ(QUOR_ILLEGAL_ARGUMENT_ERROR, quorPointMap(document, surface, 0, 0, 0, nullptr));
}

}  // namespace
