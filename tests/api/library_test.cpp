#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "library_fixture.h"
#include "quor/quor.h"

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr const char* kEmptySvg = "<svg width='1' height='1'/>";

TEST(Library, RefusesScreensWithoutSizeOrResolution) {
    const struct {
        const char* name;
        uint32_t width, height;
        float dpi;
        uint32_t code;
    } cases[] = {
        {"no width", 0, 480, 96, QUOR_ILLEGAL_ARGUMENT_ERROR},
        {"no height", 640, 0, 96, QUOR_ILLEGAL_ARGUMENT_ERROR},
        {"no resolution", 640, 480, 0, QUOR_ILLEGAL_ARGUMENT_ERROR},
        {"negative resolution", 640, 480, -kInfinity, QUOR_ILLEGAL_ARGUMENT_ERROR},
        {"NaN resolution is 0", 640, 480, NAN, QUOR_ILLEGAL_ARGUMENT_ERROR},
        {"infinite resolution is the largest", 640, 480, kInfinity, QUOR_NO_ERROR},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.code, quorInit(c.width, c.height, c.dpi));
        EXPECT_EQ(c.code == QUOR_NO_ERROR, quorSurfaceCreate(1, 1) != QUOR_INVALID_HANDLE);
        quorDone();
    }
}

TEST(Library, StaysAsItIsWhenInitialisedAgain) {
    ASSERT_EQ(QUOR_NO_ERROR, quorInit(640, 480, 96));
    EXPECT_EQ(QUOR_NO_ERROR, quorInit(100, 100, 10));
    EXPECT_EQ(QUOR_NO_ERROR, quorInit(0, 0, 0));
    const uint32_t document = quorDocCreate("<svg width='1in'/>");
    EXPECT_EQ(96.0F, quorDocWidth(document));
    float viewport[4];
    EXPECT_EQ(QUOR_NO_ERROR, quorDocViewportGet(document, viewport));
    EXPECT_EQ(480.0F, viewport[3]);
    quorDone();
}

TEST(Library, AnswersEverywhereWhenNotInitialised) {
    quorDone();
    float floats[5] = {0, 0, 1, 1, 0};
    uint32_t words[2] = {0, 0};
    EXPECT_EQ(QUOR_INVALID_HANDLE, quorSurfaceCreate(1, 1));
    EXPECT_EQ(QUOR_INVALID_HANDLE, quorDocCreate(kEmptySvg));
    EXPECT_EQ(0U, quorSurfaceWidth(2));
    EXPECT_EQ(0U, quorSurfaceHeight(2));
    EXPECT_EQ(nullptr, quorSurfacePixels(2));
    EXPECT_EQ(0.0F, quorDocWidth(3));
    EXPECT_EQ(0.0F, quorDocHeight(3));
    // Before anything else, however bad the other arguments are.
    for (const uint32_t code :
         {quorSurfaceDestroy(2), quorSurfaceResize(2, 0, 0), quorSurfaceCopy(0, nullptr, 0),
          quorSurfaceViewportGet(0, nullptr), quorSurfaceViewportSet(2, floats),
          quorSurfaceViewportTransformGet(2, nullptr), quorSurfaceViewportTransformSet(2, floats),
          quorDocDestroy(3), quorDocViewportGet(3, nullptr), quorDocViewportSet(3, floats),
          quorDocViewportAlignmentGet(3, words), quorDocViewportAlignmentSet(3, nullptr),
          quorDocDraw(0, 2, 9), quorPointMap(3, 2, 0, 0, 0, nullptr)}) {
        EXPECT_EQ(QUOR_NOT_INITIALIZED_ERROR, code);
    }
    EXPECT_EQ(2048U, quorSurfaceMaxDimension());
    EXPECT_EQ(QUOR_NO_ERROR, quorClearColor(1, 1, 1, 0));
    EXPECT_EQ(QUOR_NO_ERROR, quorClearPerform(1));
}

TEST(Library, NamesItself) {
    EXPECT_STREQ("Kestrune S.r.l.", quorGetString(QUOR_VENDOR));
    EXPECT_STREQ("1.0.0.335", quorGetString(QUOR_VERSION));
    // What the package says is what the header says.
    EXPECT_EQ(QUOR_PROJECT_VERSION ".335", std::string(quorGetString(QUOR_VERSION)));
    for (const uint32_t name : {0U, 3U, 0xFFFFFFFFU}) EXPECT_STREQ("", quorGetString(name));
}

using Handles = LibraryFixture;

TEST_F(Handles, CountFromTwoAndStartAgainAfterDone) {
    EXPECT_EQ(4U, quorSurfaceCreate(1, 1));
    EXPECT_EQ(7U, quorDocCreate(kEmptySvg));
    quorDone();
    ASSERT_EQ(QUOR_NO_ERROR, quorInit(640, 480, 96));
    EXPECT_EQ(5U, quorDocCreate(kEmptySvg));
}

TEST_F(Handles, ReuseSlotsLastReleasedFirst) {
    const uint32_t first = quorSurfaceCreate(1, 1);
    const uint32_t second = quorSurfaceCreate(1, 1);
    EXPECT_EQ(QUOR_NO_ERROR, quorSurfaceDestroy(first));
    EXPECT_EQ(QUOR_NO_ERROR, quorSurfaceDestroy(second));
    EXPECT_EQ(second + 1, quorDocCreate(kEmptySvg));
    EXPECT_EQ(first, quorSurfaceCreate(1, 1));
}

TEST_F(Handles, AreRefusedUnlessTheyNameALiveObjectOfTheKind) {
    const uint32_t surface = quorSurfaceCreate(3, 1);
    const uint32_t document = quorDocCreate(kEmptySvg);
    const uint32_t destroyed = quorSurfaceCreate(1, 1);
    ASSERT_EQ(QUOR_NO_ERROR, quorSurfaceDestroy(destroyed));
    const struct {
        const char* name;
        uint32_t handle;
    } bad[] = {
        {"none", 0},
        {"the reserved slot", 1},
        {"the other kind bit", document},
        {"the other kind in the slot", document ^ 1U},
        {"destroyed", destroyed},
        {"beyond the table", 1000},
        {"far beyond the table", 0xFFFFFFFE},
    };
    float viewport[4] = {};
    for (const auto& c : bad) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(0U, quorSurfaceWidth(c.handle));
        EXPECT_EQ(nullptr, quorSurfacePixels(c.handle));
        EXPECT_EQ(QUOR_BAD_HANDLE_ERROR, quorSurfaceResize(c.handle, 0, 0));
        EXPECT_EQ(QUOR_BAD_HANDLE_ERROR, quorSurfaceViewportGet(c.handle, viewport));
        EXPECT_EQ(QUOR_BAD_HANDLE_ERROR, quorDocDraw(0, c.handle, 9));
    }
    for (const uint32_t handle : {0U, 1U, surface, surface ^ 1U, destroyed ^ 1U, 1001U}) {
        EXPECT_EQ(QUOR_BAD_HANDLE_ERROR, quorDocViewportGet(handle, viewport)) << handle;
        EXPECT_EQ(0.0F, quorDocWidth(handle)) << handle;
    }
    EXPECT_EQ(QUOR_BAD_HANDLE_ERROR, quorDocDestroy(surface ^ 1U));
    EXPECT_EQ(QUOR_BAD_HANDLE_ERROR, quorSurfaceDestroy(document ^ 1U));
    EXPECT_EQ(3U, quorSurfaceWidth(surface)) << "nothing was changed";
}

TEST_F(Handles, ASlotReleasedTwiceIsGivenTwiceAndLeaksNothing) {
    const uint32_t surface = quorSurfaceCreate(1, 1);
    EXPECT_EQ(QUOR_NO_ERROR, quorSurfaceDestroy(surface));
    EXPECT_EQ(QUOR_NO_ERROR, quorSurfaceDestroy(surface));
    EXPECT_EQ(surface, quorSurfaceCreate(5, 1));
    EXPECT_EQ(surface + 1, quorDocCreate(kEmptySvg));
    EXPECT_EQ(0U, quorSurfaceWidth(surface)) << "the document has taken the slot";
    EXPECT_EQ(QUOR_NO_ERROR, quorDocDestroy(surface + 1));
    // The first surface is out of reach; quorDone frees it, as the leak check of sanitizers sees.
}

TEST_F(Handles, ManyObjectsKeepApart) {
    for (uint32_t i = 0; i < 300; ++i) {
        ASSERT_EQ(4 + 2 * i, quorSurfaceCreate(i + 1, 1));
    }
    for (uint32_t i = 0; i < 300; ++i) EXPECT_EQ(i + 1, quorSurfaceWidth(4 + 2 * i));
}

TEST_F(Handles, ObjectsMayBeDestroyedInAnyOrder) {
    const char* svg = "<svg viewBox='0 0 4 4'><rect width='2' height='2' stroke='red'/></svg>";
    for (int order = 0; order < 4; ++order) {
        const uint32_t surface = quorSurfaceCreate(4, 4);
        const uint32_t document = quorDocCreate(svg);
        ASSERT_EQ(QUOR_NO_ERROR, quorDocDraw(document, surface, 2));
        if ((order & 1) != 0) {
            EXPECT_EQ(QUOR_NO_ERROR, quorSurfaceDestroy(surface));
        }
        EXPECT_EQ(QUOR_NO_ERROR, quorDocDestroy(document));
        if (order == 2) {
            EXPECT_EQ(QUOR_NO_ERROR, quorSurfaceResize(surface, 9, 9));
        }
        if ((order & 1) == 0) {
            EXPECT_EQ(QUOR_NO_ERROR, quorDocDraw(0, surface, 2));
        }
    }
}

}  // namespace
