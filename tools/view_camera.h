#pragma once

#include "region.h"

namespace tool {

/// A point in the window, in pixels from its top left corner.
struct WindowPoint {
    double x = 0;
    double y = 0;
};

struct WindowSize {
    int width = 0;
    int height = 0;

    WindowPoint center() const { return {width / 2.0, height / 2.0}; }
};

/// Where the shown part of a document lies in a window: scaled, turned clockwise about its top left
/// corner, and moved so that this corner lies at `origin`.
class Camera {
public:
    /// All of `shown`, as large as the window takes it, upright, in the middle.
    void fit(const Region& shown, const WindowSize& window);

    /// The point of the drawing under `fixed` stays there. Scales stay within what floats can
    /// place.
    void zoom(double factor, const WindowPoint& fixed);
    void move(double dx, double dy);
    void rotate(double degrees, const WindowPoint& fixed);

    WindowPoint origin() const { return origin_; }
    double scale() const { return scale_; }        ///< pixels of a document unit
    double rotation() const { return rotation_; }  ///< degrees, in [0, 360)

private:
    WindowPoint origin_;
    double scale_ = 1;
    double fittedScale_ = 1;
    double rotation_ = 0;
};

}  // namespace tool
