// The stacks of the walk: entering a node computes its style from its parent's, resolves its
// references and colours, and sends the changes to the engine; leaving it sends the parent's values
// back.

#include "api/draw/traversal.h"

#include <cstring>

#include "api/draw/engine_matrix.h"
#include "api/draw/style_application.h"
#include "svg/color.h"
#include "svg/containers.h"
#include "svg/engine_error.h"
#include "svg/paint_server.h"
#include "svg/tree_resources.h"

namespace quor {

namespace {

constexpr int kInitialStackCapacity = 16;

/// Makes a colour paint unless it is there.
Status ensureColorPaint(VGPaint& paint) noexcept {
    if (paint != VG_INVALID_HANDLE) return Status::kOk;
    paint = vgCreatePaint();
    if (paint != VG_INVALID_HANDLE) vgSetParameteri(paint, VG_PAINT_TYPE, VG_PAINT_TYPE_COLOR);
    return takeEngineError();
}

/// Looks the paint server up once and keeps it with the node's own style.
void resolveServer(const TreeResources& resources, SvgPaint& paint) noexcept {
    if (paint.type != PaintType::kServer || paint.server != nullptr) return;
    SvgNode* node = resources.findReference(paint.reference);
    if (node != nullptr && isPaintServer(node->kind())) paint.server = node;
}

/// The node's `color` unless it is absent or inherits.
const char* ownColor(const SvgNode& node) noexcept {
    const char* color = node.attribute(AttributeId::kColor);
    return color != nullptr && !TextCursor(color).beginsWith("inherit") ? color : nullptr;
}

}  // namespace

Traversal::~Traversal() {
    if (fillPaint_ != VG_INVALID_HANDLE) vgDestroyPaint(fillPaint_);
    if (strokePaint_ != VG_INVALID_HANDLE) vgDestroyPaint(strokePaint_);
}

bool Traversal::initialize() noexcept {
    return styles_.reserve(kInitialStackCapacity) && transforms_.reserve(kInitialStackCapacity) &&
           levels_.reserve(kInitialStackCapacity);
}

Status Traversal::begin(const SvgMatrix& base, int useTargets) noexcept {
    styles_.clear();
    styles_.pushReserved(SvgStyle::initial());
    transforms_.clear();
    transforms_.pushReserved(base);
    levels_.clear();
    useNesting_ = 0;
    useTargets_ = useTargets;
    loadEngineMatrix(VG_MATRIX_FILL_PAINT_TO_USER, SvgMatrix());
    loadEngineMatrix(VG_MATRIX_STROKE_PAINT_TO_USER, SvgMatrix());
    loadEngineMatrix(VG_MATRIX_PATH_USER_TO_SURFACE, base);
    const Status status = ensureColorPaint(fillPaint_);
    return status != Status::kOk ? status : ensureColorPaint(strokePaint_);
}

Status Traversal::enter(SvgNode& node) noexcept {
    if (levels_.count() == kMaxNesting) return Status::kInvalidSvg;
    if (!levels_.reserveMore(1) || !styles_.reserveMore(1)) {
        levels_.clearFailure();
        styles_.clearFailure();
        return Status::kOutOfMemory;
    }
    levels_.pushReserved({&node, nullptr});
    styles_.pushReserved(styles_.last());

    resolveServer(node.resources(), node.style().fill);
    resolveServer(node.resources(), node.style().stroke);
    SvgStyle& computed = styles_.last();
    const uint32_t mask = combine(node.style(), computed);
    resolveCurrentColor(computed.fill);
    resolveCurrentColor(computed.stroke);
    applyStyle(computed, mask);
    return Status::kOk;
}

void Traversal::leave(const SvgNode& node) noexcept {
    styles_.truncate(styles_.count() - 1);
    levels_.truncate(levels_.count() - 1);
    applyStyle(styles_.last(), node.style().setMask);
}

Status Traversal::pushTransform(const SvgMatrix& transform) noexcept {
    if (!transforms_.push(this->transform() * transform)) {
        transforms_.clearFailure();
        return Status::kOutOfMemory;
    }
    loadEngineMatrix(VG_MATRIX_PATH_USER_TO_SURFACE, this->transform());
    return Status::kOk;
}

void Traversal::popTransform() noexcept {
    transforms_.truncate(transforms_.count() - 1);
    loadEngineMatrix(VG_MATRIX_PATH_USER_TO_SURFACE, transform());
}

/// Whether the walk passes through the node on its way down, or began below it.
bool Traversal::isInside(const SvgNode& node) const noexcept {
    for (const Level& level : levels_) {
        if (level.node == &node) return true;
    }
    const SvgNode* above = levels_.isEmpty() ? nullptr : levels_[0].node->parent();
    while (above != nullptr && above != &node) above = above->parent();
    return above != nullptr;
}

Status Traversal::enterTarget(SvgUse& use, const SvgNode& target) noexcept {
    if (use.isBeingDrawn || isInside(target)) return Status::kInvalidSvg;
    if (useNesting_ == kMaxUseNesting || useTargets_ == kMaxUseTargets) return Status::kInvalidSvg;
    ++useNesting_;
    ++useTargets_;
    use.isBeingDrawn = true;
    return Status::kOk;
}

void Traversal::leaveTarget(SvgUse& use) noexcept {
    --useNesting_;
    use.isBeingDrawn = false;
}

/// The value of `color` for the innermost node. Each level learns it at most once, so that deep
/// documents do not climb from every shape.
const char* Traversal::inheritedColor() noexcept {
    int known = levels_.count() - 1;
    while (levels_[known].color == nullptr) {
        const SvgNode* node = levels_[known].node;
        levels_[known].color =
            known == 0 ? lookupInherited(node, AttributeId::kColor) : ownColor(*node);
        if (levels_[known].color == nullptr) --known;
    }
    const char* color = levels_[known].color;
    for (int i = known + 1; i < levels_.count(); ++i) levels_[i].color = color;
    return color;
}

void Traversal::resolveCurrentColor(SvgPaint& paint) noexcept {
    if (paint.type == PaintType::kCurrentColor) {
        paint.type = PaintType::kColor;
    } else if (paint.type == PaintType::kServer && paint.fallback == PaintType::kCurrentColor) {
        paint.fallback = PaintType::kColor;
    } else {
        return;
    }
    paint.color = parseColor(inheritedColor());
}

}  // namespace quor
