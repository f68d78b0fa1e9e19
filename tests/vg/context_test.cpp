#include "vg/context.h"

#include <gtest/gtest.h>

#include <vector>

#include "vg/engine_fixture.h"
#include "vg/paint/paint.h"
#include "vg/vgu.h"

namespace vg {
namespace {

constexpr SurfaceFlags kPremultiplied = {.premultiplied = true};

struct ContextTable : testing::Test {
    ~ContextTable() override {
        for (Context* context : made) destroyContext(context);
    }
    Context* make(Context* share = nullptr) {
        Context* context = createContext(share);
        if (context != nullptr) made.push_back(context);
        return context;
    }
    std::vector<Context*> made;
};

TEST_F(ContextTable, HoldsSixtyFourContextsAndReusesTheLowestSlot) {
    for (uint32_t i = 0; i < ObjectTable::kMaxContextIds; ++i) {
        ASSERT_NE(make(), nullptr);
        EXPECT_EQ(made[i]->slot, i);
        EXPECT_EQ(made[i]->contextId, i);
    }
    EXPECT_EQ(make(), nullptr);
    destroyContext(made[40]);
    destroyContext(made[7]);
    made[7] = createContext(nullptr);
    made[40] = createContext(nullptr);
    ASSERT_TRUE(made[7] != nullptr && made[40] != nullptr);
    EXPECT_EQ(made[7]->slot, 7U);
    EXPECT_EQ(made[40]->slot, 40U);
    EXPECT_EQ(make(), nullptr);
}

TEST_F(ContextTable, RefusesAndIgnoresContextsThatAreNotLive) {
    Context* gone = createContext(nullptr);
    destroyContext(gone);
    EXPECT_EQ(createContext(gone), nullptr);
    destroyContext(gone);
    destroyContext(nullptr);
    Surface* surface = createSurface(1, 1, kPremultiplied);
    EXPECT_FALSE(makeCurrent(gone, surface));
    destroySurface(surface);

    Context stranger;
    EXPECT_EQ(createContext(&stranger), nullptr);
    destroyContext(&stranger);
    EXPECT_EQ(stranger.typeTag, Context::kLiveTag);
}

TEST_F(ContextTable, DestructionInUseEndsTheContextAtOnceAndFreesItNever) {
    Context* context = createContext(nullptr);
    context->useCount = 2;
    destroyContext(context);
    EXPECT_EQ(context->typeTag, 0U);
    destroyContext(context);  // no longer live: nothing happens
    EXPECT_EQ(context->useCount, 1U);
    EXPECT_EQ(createContext(context), nullptr);
    context->typeTag = Context::kLiveTag;
    destroyContext(context);
}

TEST_F(ContextTable, AFamilySharesItsObjectsUntilItsLastMemberGoes) {
    Context* founder = make();
    Context* member = make(founder);
    Context* stranger = make();
    ASSERT_NE(stranger, nullptr);
    Surface* surface = createSurface(1, 1, kPremultiplied);
    ASSERT_TRUE(makeCurrent(founder, surface));
    const VGPaint paint = vgCreatePaint();
    EXPECT_EQ(paint >> ObjectTable::kIndexBits, founder->contextId);
    EXPECT_EQ(member->contextId, founder->contextId);
    EXPECT_NE(member->slot, founder->slot);

    destroyContext(founder);
    made.erase(made.begin());
    EXPECT_EQ(member->shareContext, nullptr);
    EXPECT_NE(member->findPaint(paint), nullptr);
    EXPECT_EQ(member->findPath(paint), nullptr);
    EXPECT_EQ(stranger->findPaint(paint), nullptr);
    destroySurface(surface);
}

TEST(CurrentPair, IsBothOrNothingAndNeverDangles) {
    Context* context = createContext(nullptr);
    Surface* surface = createSurface(2, 2, kPremultiplied);
    EXPECT_FALSE(makeCurrent(context, nullptr));
    EXPECT_FALSE(makeCurrent(nullptr, surface));
    EXPECT_EQ(currentContext(), nullptr);
    EXPECT_TRUE(makeCurrent(context, surface));
    EXPECT_FALSE(makeCurrent(context, nullptr));
    EXPECT_EQ(currentContext(), context);
    EXPECT_EQ(currentSurface(), surface);
    EXPECT_TRUE(makeCurrent(nullptr, nullptr));
    EXPECT_EQ(currentContext(), nullptr);

    makeCurrent(context, surface);
    destroySurface(surface);
    EXPECT_EQ(currentContext(), nullptr);
    EXPECT_EQ(currentSurface(), nullptr);

    surface = createSurface(2, 2, kPremultiplied);
    makeCurrent(context, surface);
    destroyContext(context);
    EXPECT_EQ(currentContext(), nullptr);
    EXPECT_EQ(currentSurface(), nullptr);
    destroySurface(surface);
}

struct WithoutCurrentPair : EngineFixture {};

TEST_F(WithoutCurrentPair, EntryPointsGiveTheirFailureValueAndDoNothing) {
    const VGPath path = createPath();
    vguLine(path, 0, 0, 3, 4);
    makeCurrent(nullptr, nullptr);
    VGfloat values[9] = {7};
    vgSeti(VG_FILL_RULE, -1);
    vgSetfv(VG_CLEAR_COLOR, 4, values);
    vgClear(0, 0, 0, 0);
    vgLoadIdentity();
    vgLoadMatrix(nullptr);
    vgMultMatrix(nullptr);
    vgGetMatrix(values);
    vgGetfv(VG_CLEAR_COLOR, 4, values);
    EXPECT_EQ(values[0], 7.0F);
    EXPECT_EQ(vgGeti(VG_FILL_RULE), 0);
    EXPECT_EQ(vgGetf(VG_STROKE_LINE_WIDTH), 0.0F);
    EXPECT_EQ(vgGetVectorSize(VG_CLEAR_COLOR), 0);
    EXPECT_EQ(vgCreatePaint(), VG_INVALID_HANDLE);
    vgSetPaint(1, VG_FILL_PATH);
    vgDestroyPaint(1);
    vgSetColor(1, 0);
    EXPECT_EQ(vgGetPaint(VG_FILL_PATH), VG_INVALID_HANDLE);
    EXPECT_EQ(vgGetColor(1), 0U);
    vgSetParameteri(1, VG_PAINT_TYPE, 0);
    EXPECT_EQ(vgGetParameteri(1, VG_PAINT_TYPE), 0);
    EXPECT_EQ(vgGetParameterVectorSize(1, VG_PAINT_TYPE), 0);
    EXPECT_EQ(createPath(), VG_INVALID_HANDLE);
    EXPECT_EQ(vgPathLength(path, 0, 2), -1.0F);
    EXPECT_EQ(vgGetPathCapabilities(path), 0U);
    vgAppendPath(path, path);
    vgDestroyPath(path);
    EXPECT_EQ(vgGetError(), VG_NO_CONTEXT_ERROR);
    makeCurrent(context, surface);
    EXPECT_EQ(vgPathLength(path, 0, 2), 5.0F);
    EXPECT_EQ(vgGetError(), VG_NO_ERROR);
}

using ContextErrors = EngineFixture;

TEST_F(ContextErrors, TheFirstOneSticksUntilItIsRead) {
    EXPECT_EQ(vgGetError(), VG_NO_ERROR);
    vgDestroyPaint(12345);
    vgClear(0, 0, 0, 10);
    vgSeti(VG_FILL_RULE, VG_NON_ZERO);  // success does not clear it
    EXPECT_EQ(vgGetError(), VG_BAD_HANDLE_ERROR);
    EXPECT_EQ(vgGetError(), VG_NO_ERROR);
}

TEST_F(ContextErrors, RecoveringMemoryLosesNothing) {
    const VGint rects[] = {1, 2, 3, 4};
    const VGfloat dashes[] = {1, 2, 3, 4, 5};
    vgSetiv(VG_SCISSOR_RECTS, 4, rects);
    vgSetfv(VG_STROKE_DASH_PATTERN, 5, dashes);
    context->recoverMemory();
    EXPECT_EQ(context->scissorRects.capacity(), 4);
    EXPECT_EQ(context->stroke.effectiveDashes.capacity(), 4);
    VGfloat read[5] = {};
    vgGetfv(VG_STROKE_DASH_PATTERN, 5, read);
    EXPECT_TRUE(std::equal(read, read + 5, dashes));
    vgSetfv(VG_STROKE_DASH_PATTERN, 5, dashes);
    EXPECT_EQ(context->stroke.dashTotal, 10.0F);
    EXPECT_EQ(vgGetError(), VG_NO_ERROR);
}

}  // namespace
}  // namespace vg
