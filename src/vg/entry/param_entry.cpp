// vgSet, vgGet and vgGetError.

#include <utility>

#include "vg/entry/param_rules.h"

namespace {

void set(VGint type, const vg::ParamInput& input) noexcept {
    vg::Context* context = vg::currentContext();
    if (context != nullptr) vg::setParam(*context, *context, vg::findContextRule(type), input);
}

void get(VGint type, const vg::ParamOutput& output) noexcept {
    vg::Context* context = vg::currentContext();
    if (context != nullptr) vg::getParam(*context, *context, vg::findContextRule(type), output);
}

template <class T>
T getScalar(VGint type) noexcept {
    T value = 0;
    get(type, vg::ParamOutput(value));
    return value;
}

}  // namespace

void vgSetf(VGint type, VGfloat value) { set(type, vg::ParamInput(value)); }

void vgSeti(VGint type, VGint value) { set(type, vg::ParamInput(value)); }

void vgSetfv(VGint type, VGint count, const VGfloat* values) {
    set(type, vg::ParamInput(count, values));
}

void vgSetiv(VGint type, VGint count, const VGint* values) {
    set(type, vg::ParamInput(count, values));
}

VGfloat vgGetf(VGint type) { return getScalar<VGfloat>(type); }

VGint vgGeti(VGint type) { return getScalar<VGint>(type); }

VGint vgGetVectorSize(VGint type) {
    vg::Context* context = vg::currentContext();
    if (context == nullptr) return 0;
    return vg::paramSize(*context, *context, vg::findContextRule(type));
}

void vgGetfv(VGint type, VGint count, VGfloat* values) {
    get(type, vg::ParamOutput(count, values));
}

void vgGetiv(VGint type, VGint count, VGint* values) { get(type, vg::ParamOutput(count, values)); }

VGErrorCode vgGetError() {
    vg::Context* context = vg::currentContext();
    if (context == nullptr) return VG_NO_CONTEXT_ERROR;
    return std::exchange(context->error, VG_NO_ERROR);
}
