#pragma once

#include <cassert>
#include <cstddef>
#include <cstdlib>

namespace base {

/// An arena: memory is allocated piece by piece (a bump pointer) and freed as a whole.
///
/// Pieces are aligned for every fundamental type, keep their place, and are never constructed or
/// destroyed. Blocks double from kFirstBlock to kLargestBlock bytes; a larger piece has a block of
/// its own size.
class Arena {
public:
    static constexpr size_t kFirstBlock = 4096;
    static constexpr size_t kLargestBlock = 65536;

    Arena() noexcept = default;
    Arena(const Arena&) = delete;
    Arena& operator=(const Arena&) = delete;
    ~Arena() { freeBlocksAfter(nullptr); }

    /// Uninitialised bytes; null when memory runs out. Precondition: size > 0.
    [[nodiscard]] void* allocate(size_t size) noexcept {
        assert(size > 0);
        if (size > kLargestPiece) return nullptr;
        const size_t rounded = (size + kAlignment - 1) & ~(kAlignment - 1);
        if (rounded > static_cast<size_t>(end_ - free_) && !addBlock(rounded)) return nullptr;
        char* piece = free_;
        free_ += rounded;
        return piece;
    }

    /// Ends all pieces. Keeps the first block for the next ones, unless it is a large one.
    void clear() noexcept {
        Block* const kept = first_ != nullptr && first_->size == kFirstBlock ? first_ : nullptr;
        freeBlocksAfter(kept);
        first_ = newest_ = kept;
        blockSize_ = kFirstBlock;
        if (kept != nullptr) {
            handOut(kept);
        } else {
            free_ = end_ = nullptr;
        }
    }

private:
    static constexpr size_t kAlignment = alignof(std::max_align_t);
    static constexpr size_t kLargestPiece = ~size_t{0} / 2;

    struct alignas(kAlignment) Block {
        Block* older;
        size_t size;  ///< with this head
    };

    bool addBlock(size_t piece) noexcept {
        const size_t needed = sizeof(Block) + piece;
        const size_t size = needed > blockSize_ ? needed : blockSize_;
        auto* block = static_cast<Block*>(std::malloc(size));
        if (block == nullptr) return false;
        *block = {newest_, size};
        newest_ = block;
        if (first_ == nullptr) first_ = block;
        handOut(block);
        return true;
    }

    void handOut(Block* block) noexcept {
        free_ = reinterpret_cast<char*>(block + 1);
        end_ = reinterpret_cast<char*>(block) + block->size;
        if (blockSize_ < kLargestBlock) blockSize_ *= 2;
    }

    void freeBlocksAfter(const Block* kept) noexcept {
        while (newest_ != kept) {
            Block* older = newest_->older;
            std::free(newest_);
            newest_ = older;
        }
    }

    Block* first_ = nullptr;
    Block* newest_ = nullptr;
    char* free_ = nullptr;  ///< what is left of the newest block
    char* end_ = nullptr;
    size_t blockSize_ = kFirstBlock;
};

}  // namespace base
