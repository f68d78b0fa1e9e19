// A table of slots with a free list that is used last in, first out.

#include "api/handles.h"

namespace quor {

namespace {

uint32_t handleOf(uint32_t index, HandleKind kind) noexcept {
    return index << 1 | static_cast<uint32_t>(kind);
}

}  // namespace

bool HandleTable::initialize() noexcept {
    if (!slots_.reserve(kInitialCapacity) || !freeSlots_.reserve(kInitialCapacity)) return false;
    slots_.pushReserved({HandleKind::kSurface, nullptr});
    return true;
}

uint32_t HandleTable::add(HandleKind kind, void* object) noexcept {
    if (!freeSlots_.isEmpty()) return reuseFreeSlot({kind, object});
    const auto index = static_cast<uint32_t>(slots_.count());
    if (index > kMaxIndex || !slots_.push({kind, object})) return 0;
    return handleOf(index, kind);
}

uint32_t HandleTable::reuseFreeSlot(const HandleSlot& slot) noexcept {
    HandleSlot& reused = slots_[static_cast<int>(freeSlots_.last())];
    // A slot that was released twice may be in use again; its object is kept for reset() to
    // destroy.
    if (reused.object != nullptr && !displaced_.push(reused)) return 0;
    reused = slot;
    return handleOf(freeSlots_.pop(), slot.kind);
}

const HandleSlot* HandleTable::slotOf(uint32_t handle, HandleKind kind) const noexcept {
    const uint32_t index = handle >> 1;
    if ((handle & 1U) != static_cast<uint32_t>(kind)) return nullptr;
    if (index == 0 || index >= static_cast<uint32_t>(slots_.count())) return nullptr;
    return &slots_[static_cast<int>(index)];
}

void* HandleTable::find(uint32_t handle, HandleKind kind) const noexcept {
    const HandleSlot* slot = slotOf(handle, kind);
    return slot != nullptr && slot->kind == kind ? slot->object : nullptr;
}

bool HandleTable::release(uint32_t handle, HandleKind kind, void*& object) noexcept {
    const HandleSlot* slot = slotOf(handle, kind);
    if (slot == nullptr || (slot->object != nullptr && slot->kind != kind)) return false;
    const uint32_t index = handle >> 1;
    object = slot->object;
    slots_[static_cast<int>(index)].object = nullptr;
    // Deliberately without a test whether the slot is free already: callers that destroy a handle
    // twice count on QUOR_NO_ERROR. When the push fails the slot is just never reused.
    freeSlots_.push(index);
    return true;
}

}  // namespace quor
