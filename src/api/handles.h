#pragma once

#include <cstdint>

#include "base/array.h"

namespace quor {

/// Bit 0 of a handle.
enum class HandleKind : uint32_t { kSurface = 0, kDocument = 1 };

/// An object and its kind; null in a slot that is free.
struct HandleSlot {
    HandleKind kind;
    void* object;
};

/// Maps the caller's handles to objects. Handle = slot index << 1 | kind.
///
/// Slot 0 stays empty, so 0 is no handle. The count never shrinks while the table is in use;
/// released slots are reused last in, first out. The objects belong to whoever fills the
/// table: they are typed pointers only to callers.
class HandleTable {
public:
    /// Allocates the first slots and reserves slot 0. False when memory runs out.
    [[nodiscard]] bool initialize() noexcept;

    /// Enters an object. 0 when memory or handles run out; the object is then not in the table.
    uint32_t add(HandleKind kind, void* object) noexcept;

    /// The object of that kind behind the handle; null for a bad handle, an empty slot or an
    /// object of the other kind.
    void* find(uint32_t handle, HandleKind kind) const noexcept;

    /// Empties the slot and returns what it held in `object`, for the caller to destroy.
    /// A slot that is empty already gives null and, deliberately, becomes free once more, so that
    /// callers may destroy a handle twice: two later objects then share it. False, with nothing
    /// changed, for a bad handle or an object of the other kind.
    [[nodiscard]] bool release(uint32_t handle, HandleKind kind, void*& object) noexcept;

    /// Hands every object to `destroy`, those included that lost a shared slot to another object,
    /// and gives the memory back.
    template <class Destroy>
    void reset(Destroy destroy) noexcept {
        for (const HandleSlot& slot : slots_) {
            if (slot.object != nullptr) destroy(slot.kind, slot.object);
        }
        for (const HandleSlot& slot : displaced_) destroy(slot.kind, slot.object);
        slots_.release();
        freeSlots_.release();
        displaced_.release();
    }

private:
    static constexpr int kInitialCapacity = 16;
    static constexpr uint32_t kMaxIndex = 0x7FFFFFFF;

    /// The slot of a handle whose kind bit and index are in order; else null.
    const HandleSlot* slotOf(uint32_t handle, HandleKind kind) const noexcept;
    uint32_t reuseFreeSlot(const HandleSlot& slot) noexcept;

    base::Array<HandleSlot> slots_;
    base::Array<uint32_t> freeSlots_;
    base::Array<HandleSlot> displaced_;  ///< live objects without a slot
};

}  // namespace quor
