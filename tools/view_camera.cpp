#include "view_camera.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tool {

namespace {

constexpr double kMostZoom = 10000;  // times the fitted scale, and the inverse of the least

}  // namespace

void Camera::fit(const Region& shown, const WindowSize& window) {
    scale_ = std::min(window.width / double{shown.width}, window.height / double{shown.height});
    fittedScale_ = scale_;
    rotation_ = 0;
    origin_ = {(window.width - shown.width * scale_) / 2,
               (window.height - shown.height * scale_) / 2};
}

void Camera::zoom(double factor, const WindowPoint& fixed) {
    const double scale =
        std::clamp(scale_ * factor, fittedScale_ / kMostZoom, fittedScale_ * kMostZoom);
    const double ratio = scale / scale_;
    origin_ = {fixed.x + (origin_.x - fixed.x) * ratio, fixed.y + (origin_.y - fixed.y) * ratio};
    scale_ = scale;
}

void Camera::move(double dx, double dy) { origin_ = {origin_.x + dx, origin_.y + dy}; }

void Camera::rotate(double degrees, const WindowPoint& fixed) {
    const double radians = degrees * std::numbers::pi / 180;
    const double dx = origin_.x - fixed.x;
    const double dy = origin_.y - fixed.y;
    origin_ = {fixed.x + dx * std::cos(radians) - dy * std::sin(radians),
               fixed.y + dx * std::sin(radians) + dy * std::cos(radians)};
    rotation_ = std::fmod(rotation_ + degrees + 360, 360);
}

}  // namespace tool
