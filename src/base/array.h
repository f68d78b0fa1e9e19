#pragma once

#include <cassert>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <type_traits>
#include <utility>

namespace base {

/// A growable array on the C heap that reports exhaustion instead of throwing.
///
/// A failed growth leaves the contents as they were and sets a sticky failure flag, cleared by
/// clearFailure(): a caller may append many elements and ask once at the end.
/// Growing adds at least kGrowthStep elements and at least half of the capacity.
/// Elements are copied as bytes and never constructed or destroyed.
template <class T>
class Array {
    static_assert(std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>);

public:
    static constexpr int kGrowthStep = 64;

    Array() noexcept = default;
    Array(const Array&) = delete;
    Array& operator=(const Array&) = delete;
    Array(Array&& other) noexcept { swap(other); }
    Array& operator=(Array&& other) noexcept {
        Array(std::move(other)).swap(*this);
        return *this;
    }
    ~Array() { std::free(data_); }

    int count() const noexcept { return count_; }
    int capacity() const noexcept { return capacity_; }
    bool isEmpty() const noexcept { return count_ == 0; }
    bool failed() const noexcept { return failed_; }
    void clearFailure() noexcept { failed_ = false; }

    T* data() noexcept { return data_; }
    const T* data() const noexcept { return data_; }
    T* begin() noexcept { return data_; }
    T* end() noexcept { return data_ + count_; }
    const T* begin() const noexcept { return data_; }
    const T* end() const noexcept { return data_ + count_; }

    T& operator[](int index) noexcept {
        assert(0 <= index && index < count_);
        return data_[index];
    }
    const T& operator[](int index) const noexcept {
        assert(0 <= index && index < count_);
        return data_[index];
    }
    T& last() noexcept { return (*this)[count_ - 1]; }
    const T& last() const noexcept { return (*this)[count_ - 1]; }

    /// Makes room for `capacity` elements in all, exactly that many if it has to grow.
    [[nodiscard]] bool reserve(int capacity) noexcept {
        return capacity <= capacity_ || reallocate(capacity);
    }

    /// Makes room for `more` further elements, in growth steps.
    [[nodiscard]] bool reserveMore(int more) noexcept {
        if (more <= capacity_ - count_) return true;
        if (more > kMaxCount - count_) return fail();
        const int needed = count_ + more;
        const int half = capacity_ / 2;
        const int step = half > kGrowthStep ? half : kGrowthStep;
        const int stepped = capacity_ > kMaxCount - step ? kMaxCount : capacity_ + step;
        return reallocate(needed > stepped ? needed : stepped);
    }

    /// Appends a copy of `value`; false (and the failure flag) when memory runs out.
    bool push(const T& value) noexcept {
        const T copy = value;  // `value` may live inside the array
        if (count_ == capacity_ && !reserveMore(1)) return false;
        data_[count_++] = copy;
        return true;
    }

    /// Appends without a check. Precondition: count() < capacity().
    void pushReserved(const T& value) noexcept {
        assert(count_ < capacity_);
        data_[count_++] = value;
    }

    T pop() noexcept {
        assert(count_ > 0);
        return data_[--count_];
    }

    /// Sets the count; new elements are uninitialised. False when memory runs out.
    [[nodiscard]] bool resize(int count) noexcept {
        if (count > count_ && !reserveMore(count - count_)) return false;
        count_ = count;
        return true;
    }

    /// Sets the count and fills the new elements with zero bytes.
    [[nodiscard]] bool resizeZeroed(int count) noexcept {
        const int before = count_;
        if (!resize(count)) return false;
        if (count > before) {
            std::memset(static_cast<void*>(data_ + before), 0,
                        kElementSize * static_cast<size_t>(count - before));
        }
        return true;
    }

    /// Drops elements from the end. Precondition: 0 <= count <= count().
    void truncate(int count) noexcept {
        assert(0 <= count && count <= count_);
        count_ = count;
    }

    /// Forgets the elements, keeps the memory.
    void clear() noexcept { count_ = 0; }

    /// Gives the memory back.
    void release() noexcept { Array().swap(*this); }

    /// Shrinks the memory to the used size (at least one element). A shrink that fails sets the
    /// failure flag and changes nothing else.
    void shrinkToFit() noexcept {
        const int fitted = count_ > 0 ? count_ : 1;
        if (data_ != nullptr && fitted < capacity_) (void)reallocate(fitted);
    }

    void swap(Array& other) noexcept {
        std::swap(data_, other.data_);
        std::swap(count_, other.count_);
        std::swap(capacity_, other.capacity_);
        std::swap(failed_, other.failed_);
    }

private:
    static constexpr size_t kElementSize = sizeof(T);  // NOLINT(bugprone-sizeof-expression): a
                                                       // pointer's own size is meant, too
    /// Byte sizes stay below 2^31, so that sums of two counts never overflow an int.
    static constexpr int kMaxCount = static_cast<int>(0x7FFFFFFF / kElementSize);

    bool fail() noexcept {
        failed_ = true;
        return false;
    }

    bool reallocate(int capacity) noexcept {
        if (capacity > kMaxCount) return fail();
        void* memory =
            std::realloc(static_cast<void*>(data_), kElementSize * static_cast<size_t>(capacity));
        if (memory == nullptr) return fail();
        data_ = static_cast<T*>(memory);
        capacity_ = capacity;
        return true;
    }

    T* data_ = nullptr;
    int count_ = 0;
    int capacity_ = 0;
    bool failed_ = false;
};

/// Bytes of the memory behind an array.
template <class T>
size_t byteCount(const Array<T>& array) noexcept {
    return static_cast<size_t>(array.capacity()) * sizeof(T);
}

}  // namespace base
