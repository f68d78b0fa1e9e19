#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <new>

#include "vg/context.h"
#include "vg/engine.h"
#include "vg/surface.h"
#include "vg/vg.h"

namespace vg {

/// Makes the calls one after the other; each must leave this error.
template <class... Calls>
void expectEach(VGErrorCode error, const Calls&... calls) {
    int number = 0;
    const auto expectOne = [&](const auto& call) {
        call();
        ++number;
        EXPECT_EQ(vgGetError(), error) << "call " << number;
    };
    (expectOne(calls), ...);
}

/// A new context, current on a new surface of zero pixels, for the length of one test.
struct EngineFixture : testing::Test {
    explicit EngineFixture(int32_t width = 16, int32_t height = 16,
                           const SurfaceFlags& flags = {.premultiplied = true})
        : context(createContext(nullptr)), surface(createSurface(width, height, flags)) {
        if (context == nullptr || surface == nullptr) throw std::bad_alloc();
        makeCurrent(context, surface);
    }
    ~EngineFixture() override {
        destroyContext(context);
        destroySurface(surface);
    }

    static VGPath createPath(VGbitfield capabilities = VG_PATH_CAPABILITY_ALL) {
        return vgCreatePath(VG_PATH_FORMAT_STANDARD, VG_PATH_DATATYPE_F, 1.0F, 0.0F, 0, 0,
                            capabilities);
    }

    /// The pixel x columns from the left and y rows from the bottom.
    uint32_t pixelAt(int32_t x, int32_t y) const { return surface->view().row(y)[x]; }

    Context* context;
    Surface* surface;
};

}  // namespace vg
