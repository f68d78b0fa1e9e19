// The process-wide table of contexts.

#include "vg/context.h"

#include <algorithm>
#include <array>
#include <new>

#include "vg/current_pair.h"
#include "vg/paint/paint.h"

namespace vg {
namespace {

constexpr int kScissorCapacity = 16;  // integers
constexpr int kDashCapacity = 8;      // floats

std::array<Context*, ObjectTable::kMaxContextIds> contexts;

bool isLive(const Context* context) noexcept {
    if (context == nullptr) return false;
    return std::find(contexts.begin(), contexts.end(), context) != contexts.end() &&
           context->typeTag == Context::kLiveTag;
}

SharedResources* createSharedResources() noexcept {
    auto* shared = new (std::nothrow) SharedResources;
    if (shared != nullptr && !shared->objects.initialize()) {
        delete shared;
        return nullptr;
    }
    return shared;
}

/// Joins the family of `share`, or founds one.
bool attachResources(Context& context, Context* share) noexcept {
    context.shareContext = share;
    if (share == nullptr) {
        context.shared = createSharedResources();
    } else {
        context.shared = share->shared;
        ++context.shared->references;
    }
    return context.shared != nullptr;
}

bool allocateArrays(Context& context) noexcept {
    return context.scissorRects.reserve(kScissorCapacity) &&
           context.stroke.dashPattern.reserve(kDashCapacity) &&
           context.stroke.effectiveDashes.reserve(kDashCapacity);
}

void freeContext(Context* context) noexcept {
    release(context->fillPaint);
    release(context->strokePaint);
    if (context->shared != nullptr && --context->shared->references == 0) delete context->shared;
    delete context;
}

void emptySlot(Context* context) noexcept {
    contexts[context->slot] = nullptr;
    for (Context* other : contexts) {
        if (other != nullptr && other->shareContext == context) other->shareContext = nullptr;
    }
}

}  // namespace

Context* createContext(Context* share) noexcept {
    auto* const slot = std::find(contexts.begin(), contexts.end(), nullptr);
    if (slot == contexts.end()) return nullptr;
    if (share != nullptr && !isLive(share)) return nullptr;
    auto* context = new (std::nothrow) Context;
    if (context == nullptr) return nullptr;
    context->slot = static_cast<uint32_t>(slot - contexts.begin());
    context->contextId = share != nullptr ? share->contextId : context->slot;
    readConfiguration(context->configuration, configurationPath());
    if (!attachResources(*context, share) || !allocateArrays(*context)) {
        freeContext(context);
        return nullptr;
    }
    *slot = context;
    return context;
}

void destroyContext(Context* context) noexcept {
    if (!isLive(context)) return;
    if (currentPair.context == context) currentPair = {};
    context->typeTag = 0;
    if (--context->useCount > 0) return;
    emptySlot(context);
    freeContext(context);
}

bool makeCurrent(Context* context, Surface* surface) noexcept {
    const bool isPair = isLive(context) && surface != nullptr;
    const bool isNothing = context == nullptr && surface == nullptr;
    if (!isPair && !isNothing) return false;
    currentPair = {context, surface};
    return true;
}

}  // namespace vg
