#include "failing_allocator.h"

#include <cstdlib>
#include <new>

namespace {

constexpr long kNever = -1;

long live = 0;
long count = 0;
long firstFailure = kNever;  ///< the value of `count` that fails
bool allLaterFail = false;

bool mustFail() {
    const long index = count++;
    if (firstFailure == kNever || index < firstFailure) return false;
    return index == firstFailure || allLaterFail;
}

}  // namespace

long liveAllocations() { return live; }

long allocationCount() { return count; }

void failAllocation(long index, bool allLater) {
    firstFailure = count + index;
    allLaterFail = allLater;
}

bool stopFailingAllocations() {
    const bool failed = firstFailure != kNever && count > firstFailure;
    firstFailure = kNever;
    return failed;
}

extern "C" {
void* __real_malloc(size_t size);
void* __real_calloc(size_t number, size_t size);
void* __real_realloc(void* memory, size_t size);
void __real_free(void* memory);

void* __wrap_malloc(size_t size) {
    void* memory = mustFail() ? nullptr : __real_malloc(size);
    if (memory != nullptr) ++live;
    return memory;
}
void* __wrap_calloc(size_t number, size_t size) {
    void* memory = mustFail() ? nullptr : __real_calloc(number, size);
    if (memory != nullptr) ++live;
    return memory;
}
void* __wrap_realloc(void* memory, size_t size) {
    if (mustFail()) return nullptr;
    void* moved = __real_realloc(memory, size);
    if (memory == nullptr && moved != nullptr) ++live;
    return moved;
}
void __wrap_free(void* memory) {
    if (memory != nullptr) --live;
    __real_free(memory);
}
}

void* operator new(size_t size) {
    if (void* memory = std::malloc(size != 0 ? size : 1)) return memory;
    throw std::bad_alloc();
}
void* operator new[](size_t size) { return operator new(size); }
void* operator new(size_t size, const std::nothrow_t&) noexcept {
    return std::malloc(size != 0 ? size : 1);
}
void* operator new[](size_t size, const std::nothrow_t&) noexcept {
    return std::malloc(size != 0 ? size : 1);
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, size_t) noexcept { std::free(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
