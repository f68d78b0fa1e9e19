#pragma once

#include <cstdint>

#include "api/element_collector.h"
#include "api/element_draw.h"
#include "svg/status.h"
#include "vg/engine.h"

namespace quor {

/// Trims boxes of outlines to the pixels that are painted, by painting them at the best quality: a
/// sharp corner or a fading gradient may leave the outermost pixels of a box untouched.
class PaintedTrim {
public:
    PaintedTrim() noexcept = default;
    PaintedTrim(const PaintedTrim&) = delete;
    PaintedTrim& operator=(const PaintedTrim&) = delete;
    /// What was current becomes so again.
    ~PaintedTrim();

    /// Shrinks the element's box; one that paints no pixel is left without width and height.
    Status trim(PackingElement& element) noexcept;

private:
    /// Makes a surface of at least that size current. False when memory runs out.
    bool prepare(int32_t width, int32_t height) noexcept;
    void shrinkToPaint(PackingElement& element) const noexcept;

    vg::Surface* const before_ = vg::currentSurface();
    vg::Surface* surface_ = nullptr;
    ElementDraw elementDraw_;
};

}  // namespace quor
