#pragma once

#include <cstdint>

#include "base/array.h"
#include "vg/vg.h"

namespace vg {

enum class ObjectKind : uint32_t { kPath = 1, kImage = 2, kPaint = 3, kMaskLayer = 4 };

/// The head of every engine object. Objects are counted: one reference belongs to the handle
/// table, one to each place of a context that has the object set.
struct Object {
    explicit Object(ObjectKind objectKind) noexcept : kind(objectKind) {}
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    virtual ~Object() = default;

    /// Frees what can be made again when it is needed. Called when memory has run out, between
    /// draws only.
    virtual void releaseCaches() noexcept {}

    ObjectKind kind;
    VGint subKind = 0;  ///< of images and mask layers: their format
    uint32_t references = 1;
};

void retain(Object* object) noexcept;   ///< null is ignored
void release(Object* object) noexcept;  ///< frees the object with its last reference

/// The table of objects that a family of contexts shares. Entry 0 stays null, so that no object
/// gets handle 0; freed entries are reused, the last freed first.
class ObjectTable {
public:
    static constexpr int kIndexBits = 26;
    static constexpr uint32_t kIndexMask = (1U << kIndexBits) - 1;

    /// As many families of contexts as the other bits can tell apart.
    static constexpr uint32_t kMaxContextIds = 1U << (32 - kIndexBits);

    ObjectTable() noexcept = default;
    ~ObjectTable();  ///< releases every object left

    /// Allocates the first 64 entries. False when memory runs out.
    [[nodiscard]] bool initialize() noexcept;

    /// Enters the object and takes over its reference. 0 (the object stays the caller's) when
    /// memory or indices run out.
    VGHandle add(Object* object, uint32_t contextId) noexcept;

    /// The object of that kind behind the handle, or null. A mask layer counts only while it holds
    /// mask values, VG_A_8.
    Object* find(VGHandle handle, uint32_t contextId, ObjectKind kind) const noexcept;

    void releaseCaches() const noexcept;  ///< those of every object

    /// Empties the handle's entry, gives its reference to the caller. Precondition: find() gave an
    /// object.
    Object* take(VGHandle handle) noexcept;

    /// Empties the handle's entry and releases the object. Precondition: find() gave an object.
    void remove(VGHandle handle) noexcept { release(take(handle)); }

private:
    base::Array<Object*> entries_;
    base::Array<uint32_t> freeIndices_;
};

}  // namespace vg
