// A slot table with a free list: the slot that was freed last is used first.

#include "vg/object_handles.h"

#include <cassert>
#include <limits>
#include <utility>

namespace vg {
namespace {

constexpr int kInitialEntries = 64;

/// Whether handles to the object count: paths and images must leave room for one more reference.
bool isUsable(const Object& object) noexcept {
    switch (object.kind) {
        case ObjectKind::kPath:
        case ObjectKind::kImage:
            return object.references < std::numeric_limits<uint32_t>::max();
        case ObjectKind::kMaskLayer:
            return object.subKind == VG_A_8;
        default:
            return true;
    }
}

int indexOf(VGHandle handle) noexcept { return static_cast<int>(handle & ObjectTable::kIndexMask); }

}  // namespace

void retain(Object* object) noexcept {
    if (object != nullptr) ++object->references;
}

void release(Object* object) noexcept {
    if (object != nullptr && --object->references == 0) delete object;
}

ObjectTable::~ObjectTable() {
    for (Object* object : entries_) release(object);
}

bool ObjectTable::initialize() noexcept {
    return entries_.reserve(kInitialEntries) && freeIndices_.reserve(kInitialEntries) &&
           entries_.push(nullptr);
}

VGHandle ObjectTable::add(Object* object, uint32_t contextId) noexcept {
    uint32_t index = static_cast<uint32_t>(entries_.count());
    if (!freeIndices_.isEmpty()) {
        index = freeIndices_.pop();
        entries_[static_cast<int>(index)] = object;
    } else {
        // Room for every index to be freed is made here, so that remove() cannot fail.
        if (index > kIndexMask || !entries_.reserveMore(1)) return VG_INVALID_HANDLE;
        if (!freeIndices_.reserve(entries_.capacity())) return VG_INVALID_HANDLE;
        entries_.pushReserved(object);
    }
    return contextId << kIndexBits | index;
}

Object* ObjectTable::find(VGHandle handle, uint32_t contextId, ObjectKind kind) const noexcept {
    const int index = indexOf(handle);
    if (handle >> kIndexBits != contextId || index >= entries_.count()) return nullptr;
    Object* const object = entries_[index];  // entry 0 is null
    const bool isFound = object != nullptr && object->kind == kind && isUsable(*object);
    return isFound ? object : nullptr;
}

void ObjectTable::releaseCaches() const noexcept {
    for (Object* object : entries_) {
        if (object != nullptr) object->releaseCaches();
    }
}

Object* ObjectTable::take(VGHandle handle) noexcept {
    assert(entries_[indexOf(handle)] != nullptr);
    freeIndices_.pushReserved(handle & kIndexMask);
    return std::exchange(entries_[indexOf(handle)], nullptr);
}

}  // namespace vg
