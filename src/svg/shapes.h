#pragma once

#include "svg/length.h"
#include "svg/node.h"
#include "svg/transformed_outlines.h"
#include "vg/vg.h"

namespace quor {

/// A node with an outline: an engine path that is built when it is first needed and kept.
class SvgShape : public SvgNode {
public:
    using SvgNode::SvgNode;
    ~SvgShape() override;

    /// Appends the outline to an empty path. Bad geometry leaves the path empty; the codes are
    /// those of the engine.
    virtual Status buildGeometry(VGPath path) noexcept = 0;

    /// Builds the engine path unless it is there.
    Status ensurePath() noexcept;

    VGPath path() const noexcept { return path_; }
    /// The tight box of the path in user space, measured when it is first asked for; empty for an
    /// empty path and while there is none. Errors stay pending in the engine.
    const Box& pathBounds() noexcept;

    /// The path as the engine's path matrix, which is `transform`, maps it. Owned by the shape,
    /// valid until the next call.
    Status findSurfacePath(const SvgMatrix& transform, VGPath& surfacePath) noexcept {
        return transformedOutlines_.find(path_, transform, surfacePath);
    }

protected:
    /// An attribute as a finite length in user units; 0 when absent.
    float length(AttributeId id, LengthAxis axis) const noexcept;

private:
    void readPathBounds() noexcept;

    VGPath path_ = VG_INVALID_HANDLE;
    Box pathBounds_;
    bool hasPathBounds_ = false;
    TransformedOutlines transformedOutlines_;
};

class SvgCircle final : public SvgShape {
public:
    using SvgShape::SvgShape;
    Status buildGeometry(VGPath path) noexcept override;
};

class SvgEllipse final : public SvgShape {
public:
    using SvgShape::SvgShape;
    Status buildGeometry(VGPath path) noexcept override;
};

class SvgLine final : public SvgShape {
public:
    using SvgShape::SvgShape;
    Status buildGeometry(VGPath path) noexcept override;
};

class SvgRect final : public SvgShape {
public:
    using SvgShape::SvgShape;
    Status buildGeometry(VGPath path) noexcept override;
};

/// `polyline` (open) and `polygon` (closed).
class SvgPolyline final : public SvgShape {
public:
    using SvgShape::SvgShape;
    Status buildGeometry(VGPath path) noexcept override;
};

class SvgPolygon final : public SvgShape {
public:
    using SvgShape::SvgShape;
    Status buildGeometry(VGPath path) noexcept override;
};

class SvgPath final : public SvgShape {
public:
    using SvgShape::SvgShape;
    Status buildGeometry(VGPath path) noexcept override;

    /// The `pathLength` attribute, else the length of the outline; 0 before the path is built.
    float pathLength() const noexcept;
};

}  // namespace quor
