// What a kept document costs when it is drawn again: no allocation, nothing flattened, stroked or
// built a second time.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>

#include "failing_allocator.h"
#include "quor/quor.h"
#include "vg/context.h"
#include "vg/draw/path_cache.h"
#include "vg/paint/paint.h"
#include "vg/path/path.h"

namespace {

/// The samples, then documents made for paths that draws could stumble over.
std::map<std::string, std::string> drawings() {
    std::map<std::string, std::string> texts;
    for (const auto& entry : std::filesystem::directory_iterator(QUOR_SAMPLES_FOLDER)) {
        if (entry.path().extension() != ".svg") continue;
        std::ifstream stream(entry.path(), std::ios::binary);
        texts[entry.path().filename()] = {std::istreambuf_iterator<char>(stream), {}};
    }
    texts["a non-scaling stroke under a skew"] =
        "<svg viewBox='0 0 40 40'><circle cx='9' cy='9' r='8' stroke='blue' fill='none' "
        "stroke-dasharray='2 1' transform='skewX(20)' vector-effect='non-scaling-stroke'/></svg>";
    texts["colours that are inherited by way of use"] =
        "<svg viewBox='0 0 40 40' color='red' xmlns:xlink='x'><g id='a' fill='currentColor'>"
        "<circle cx='9' cy='9' r='8' stroke='blue' stroke-dasharray='2 1'/></g>"
        "<linearGradient id='b'><stop stop-color='currentColor'/><stop offset='1'/>"
        "</linearGradient><g fill='url(#b)'><rect width='9' height='3' fill-opacity='.5'/>"
        "<rect width='5' height='9'/></g>"
        "<use xlink:href='#a' x='9' transform='scale(1.5)' stroke-linecap='round'/></svg>";
    texts["a fill and a wide stroke, whose tolerances differ"] =
        "<svg viewBox='0 0 40 40'><ellipse cx='20' cy='20' rx='9' ry='4' stroke-opacity='.5' "
        "stroke='red' stroke-width='9'/></svg>";
    return texts;
}

/// How much all paths and paints of the library have made so far.
uint64_t makeCount() {
    const vg::Context& context = *vg::currentContext();
    uint64_t count = 0;
    for (VGHandle index = 1; index < 4096; ++index) {
        const VGHandle handle = context.contextId << vg::ObjectTable::kIndexBits | index;
        if (const vg::Path* path = context.findPath(handle);
            path != nullptr && vg::cacheOf(*path) != nullptr) {
            count += vg::cacheOf(*path)->flattenings.makeCount() +
                     vg::cacheOf(*path)->strokes.makeCount();
        }
        if (const vg::Paint* paint = context.findPaint(handle)) count += paint->ramps.buildCount();
    }
    return count;
}

constexpr int kColdDraws = 4;  // after the last of them, everything that is kept has been made

TEST(WarmDraw, AllocatesAndMakesNothing) {
    for (const auto& [name, text] : drawings()) {
        for (const uint32_t quality : {0U, 1U, 2U}) {
            SCOPED_TRACE(name + " at quality " + std::to_string(quality));
            ASSERT_EQ(QUOR_NO_ERROR, quorInit(640, 480, 96.0F));
            const uint32_t surface = quorSurfaceCreate(120, 90);
            const uint32_t document = quorDocCreate(text.c_str());
            EXPECT_EQ(QUOR_NO_ERROR, quorDocDraw(document, surface, quality));
            const uint64_t made = makeCount();
            EXPECT_GT(made, 0U);
            for (int i = 1; i < kColdDraws; ++i) quorDocDraw(document, surface, quality);
            const long before = allocationCount();
            EXPECT_EQ(QUOR_NO_ERROR, quorDocDraw(document, surface, quality));
            EXPECT_EQ(QUOR_NO_ERROR, quorDocDraw(document, surface, quality));
            EXPECT_EQ(before, allocationCount());
            EXPECT_EQ(made, makeCount());
            quorDone();
        }
    }
}

}  // namespace
