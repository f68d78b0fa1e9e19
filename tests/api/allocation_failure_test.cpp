// Every allocation of a session fails in turn: nothing leaks, nothing crashes, and what is reported
// is the lack of memory.

#include <gtest/gtest.h>

#include "failing_allocator.h"
#include "quor/quor.h"

namespace {

constexpr const char* kEverything = R"svg(
<svg viewBox="0 0 40 40" xmlns:xlink="http://www.w3.org/1999/xlink" color="teal">
  <defs><g id="pair" style="fill: red; stroke-width: 2">
    <path d="M1 1 L9 1 Q9 9 5 9 T1 1 C1 2 3 4 5 6 A3 2 10 0 1 9 9 Z"/></g></defs>
  <use xlink:href="#pair" x="10" transform="rotate(10)" stroke="blue" stroke-linejoin="round"/>
  <linearGradient id="sky"><stop offset="0" stop-color="red"/>
    <stop offset="1" stop-color="currentColor"/></linearGradient>
  <radialGradient id="sun" xlink:href="#sky" spreadMethod="reflect"/><solidColor id="flat"/>
  <rect width="9" height="9" fill="url(#sun)" fill-opacity=".5" stroke="url(#flat)"/>
  <rect x="2" y="20" width="9" height="9" rx="2" fill="url(#sky) currentColor"/>
  <circle cx="30" cy="30" r="6" fill-opacity=".5" stroke="black" stroke-dasharray="3 1"
          stroke-linecap="round" transform="skewX(10)" vector-effect="non-scaling-stroke"/>
  <polygon points="20,20 30,20 25,38" fill-rule="evenodd" stroke="black"/>
</svg>)svg";

/// What the calls of one session reported.
struct Session {
    uint32_t init = 0;
    uint32_t surface = 0;
    uint32_t document = 0;
    uint32_t resize = 0;
    uint32_t draw = 0;
    uint32_t redraw = 0;
    uint32_t reloaded = 0;  ///< the document, in the memory of one before
};

Session runSession() {
    Session session;
    session.init = quorInit(640, 480, 96.0F);
    if (session.init == QUOR_NO_ERROR) {
        session.surface = quorSurfaceCreate(30, 30);
        session.document = quorDocCreate(kEverything);
        session.resize = quorSurfaceResize(session.surface, 40, 40);
        if (session.surface != 0 && session.document != 0) {
            session.draw = quorDocDraw(session.document, session.surface, 2);
            session.redraw = quorDocDraw(session.document, session.surface, 1);
        }
        quorDocDestroy(session.document);
        session.reloaded = quorDocCreate(kEverything);
        quorDocDestroy(session.reloaded);
        quorSurfaceDestroy(session.surface);
    }
    quorDone();
    return session;
}

bool isNoneOrOutOfMemory(uint32_t code) {
    return code == QUOR_NO_ERROR || code == QUOR_OUT_OF_MEMORY_ERROR;
}

void expectLackOfMemoryOnly(const Session& session) {
    EXPECT_TRUE(isNoneOrOutOfMemory(session.init)) << session.init;
    EXPECT_TRUE(isNoneOrOutOfMemory(session.draw)) << session.draw;
    EXPECT_TRUE(isNoneOrOutOfMemory(session.redraw)) << session.redraw;
    if (session.surface != 0) {
        EXPECT_TRUE(isNoneOrOutOfMemory(session.resize)) << session.resize;
    }
}

void failEachAllocation(bool allLater) {
    runSession();  // whatever is allocated once in a process
    long failed = 0;
    for (long index = 0;; ++index) {
        const long before = liveAllocations();
        failAllocation(index, allLater);
        const Session session = runSession();
        const bool wasReached = stopFailingAllocations();
        ASSERT_EQ(before, liveAllocations()) << "allocation " << index;
        SCOPED_TRACE(testing::Message() << "allocation " << index);
        expectLackOfMemoryOnly(session);
        if (!wasReached) {
            EXPECT_NE(0U, session.document);
            EXPECT_NE(0U, session.reloaded);
            EXPECT_EQ(QUOR_NO_ERROR, session.redraw);
            break;
        }
        ++failed;
    }
    EXPECT_GT(failed, 40) << "the allocations of the session were not seen";
}

TEST(AllocationFailure, OfOneAllocationIsReportedOrOvercome) { failEachAllocation(false); }

TEST(AllocationFailure, OfAllFromOneOnIsReported) { failEachAllocation(true); }

TEST(AllocationFailure, IsForgottenByTheNextDraw) {
    ASSERT_EQ(QUOR_NO_ERROR, quorInit(640, 480, 96.0F));
    const uint32_t surface = quorSurfaceCreate(40, 40);
    for (long index = 0;; ++index) {
        const uint32_t document = quorDocCreate(kEverything);
        failAllocation(index, true);
        const uint32_t code = quorDocDraw(document, surface, 2);
        const bool wasReached = stopFailingAllocations();
        // Without memory for what is kept for the next draw, this one still succeeds.
        EXPECT_TRUE(wasReached ? isNoneOrOutOfMemory(code) : code == QUOR_NO_ERROR) << index;
        EXPECT_EQ(QUOR_NO_ERROR, quorDocDraw(document, surface, 2)) << index;
        quorDocDestroy(document);
        if (!wasReached) break;
    }
    quorDone();
}

}  // namespace
