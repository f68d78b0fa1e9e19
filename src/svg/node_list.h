#pragma once

namespace quor {

class SvgNode;

/// Nodes in a row, linked through themselves: SvgNode::appendChild() adds one.
class SvgNodeList {
public:
    class Iterator {
    public:
        explicit Iterator(SvgNode* node) noexcept : node_(node) {}
        SvgNode* operator*() const noexcept { return node_; }
        Iterator& operator++() noexcept;
        bool operator==(const Iterator& other) const noexcept = default;

    private:
        SvgNode* node_;
    };

    bool isEmpty() const noexcept { return first_ == nullptr; }
    Iterator begin() const noexcept { return Iterator(first_); }
    Iterator end() const noexcept { return Iterator(nullptr); }

private:
    friend class SvgNode;

    SvgNode* first_ = nullptr;
    SvgNode* last_ = nullptr;
};

}  // namespace quor
