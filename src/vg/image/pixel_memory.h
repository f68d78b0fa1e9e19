#pragma once

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace vg {

/// The pixels of a surface, aligned to a cache line of 64 bytes: stores that fill a whole line need
/// not read it first, and rows of a multiple of 16 pixels have only such.
class PixelMemory {
public:
    PixelMemory() noexcept = default;
    PixelMemory(const PixelMemory&) = delete;
    PixelMemory& operator=(const PixelMemory&) = delete;
    ~PixelMemory() { std::free(block_); }

    /// Replaces them by `count` pixels of zero, in the same memory if that is enough. False, with
    /// nothing changed, when memory runs out.
    [[nodiscard]] bool allocate(int32_t count) noexcept {
        constexpr size_t kLine = 64;
        const size_t bytes = static_cast<size_t>(count) * sizeof(uint32_t);
        if (count <= capacity_) {
            count_ = count;
            std::memset(data_, 0, bytes);
            return true;
        }
        void* const block = std::calloc(bytes + kLine, 1);
        if (block == nullptr) return false;
        std::free(block_);
        block_ = block;
        const auto address = reinterpret_cast<uintptr_t>(block);
        data_ = reinterpret_cast<uint32_t*>((address + kLine - 1) / kLine * kLine);
        count_ = capacity_ = count;
        return true;
    }

    /// Gives the memory back.
    void release() noexcept { PixelMemory().swap(*this); }

    int32_t count() const noexcept { return count_; }
    uint32_t* data() noexcept { return data_; }
    uint32_t* begin() noexcept { return data_; }
    uint32_t* end() noexcept { return data_ + count_; }
    const uint32_t* begin() const noexcept { return data_; }
    const uint32_t* end() const noexcept { return data_ + count_; }
    uint32_t& operator[](int32_t index) noexcept { return data_[index]; }

    void swap(PixelMemory& other) noexcept {
        std::swap(block_, other.block_);
        std::swap(data_, other.data_);
        std::swap(count_, other.count_);
        std::swap(capacity_, other.capacity_);
    }

private:
    void* block_ = nullptr;  ///< from calloc
    uint32_t* data_ = nullptr;
    int32_t count_ = 0;
    int32_t capacity_ = 0;
};

}  // namespace vg
