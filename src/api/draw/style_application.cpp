// Maps the codes of style properties to the engine's and sends those that changed.

#include "api/draw/style_application.h"

#include "vg/vg.h"

namespace quor {

namespace {

constexpr uint32_t kEngineProperties = StyleBit::kFillRule | StyleBit::kStrokeWidth |
                                       StyleBit::kStrokeLineCap | StyleBit::kStrokeLineJoin |
                                       StyleBit::kStrokeMiterLimit | StyleBit::kStrokeDashArray |
                                       StyleBit::kStrokeDashOffset;

// Indexed by the property's code; 0 stands for a code that is not sent.
constexpr VGint kFillRules[] = {0, VG_EVEN_ODD, VG_NON_ZERO};
constexpr VGint kCapStyles[] = {0, VG_CAP_BUTT, VG_CAP_ROUND, VG_CAP_SQUARE};
constexpr VGint kJoinStyles[] = {0, VG_JOIN_MITER, VG_JOIN_ROUND, VG_JOIN_BEVEL};

template <class Code, int kCount>
void sendCode(VGParamType parameter, const VGint (&values)[kCount], Code code) noexcept {
    const VGint value = values[static_cast<uint32_t>(code)];
    if (value != 0) vgSeti(parameter, value);
}

void sendDashes(const DashList& dashes) noexcept {
    if (dashes.count > 0) {
        vgSetfv(VG_STROKE_DASH_PATTERN, dashes.count, dashes.values);
    } else {
        vgSetfv(VG_STROKE_DASH_PATTERN, 0, nullptr);
    }
}

}  // namespace

void applyStyle(const SvgStyle& style, uint32_t mask) noexcept {
    if ((mask & kEngineProperties) == 0) return;
    if ((mask & StyleBit::kFillRule) != 0) sendCode(VG_FILL_RULE, kFillRules, style.fillRule);
    if ((mask & StyleBit::kStrokeWidth) != 0) vgSetf(VG_STROKE_LINE_WIDTH, style.strokeWidth);
    if ((mask & StyleBit::kStrokeLineCap) != 0) {
        sendCode(VG_STROKE_CAP_STYLE, kCapStyles, style.strokeLineCap);
    }
    if ((mask & StyleBit::kStrokeLineJoin) != 0) {
        sendCode(VG_STROKE_JOIN_STYLE, kJoinStyles, style.strokeLineJoin);
    }
    if ((mask & StyleBit::kStrokeMiterLimit) != 0) {
        vgSetf(VG_STROKE_MITER_LIMIT, style.strokeMiterLimit);
    }
    if ((mask & StyleBit::kStrokeDashArray) != 0) sendDashes(style.strokeDashArray);
    if ((mask & StyleBit::kStrokeDashOffset) != 0) {
        vgSetf(VG_STROKE_DASH_PHASE, style.strokeDashOffset);
    }
}

}  // namespace quor
