#pragma once

// The definition of a stroke, spelled out shape by shape: a quad for each edge, a wedge for each
// join, a half for each cap, none of them merged. Shares only the plain structures with the engine.

#include <algorithm>
#include <cmath>
#include <vector>

#include "vg/path/path_samples.h"
#include "vg/stroke/stroker.h"

namespace vg {

struct Place {
    double x = 0.0;
    double y = 0.0;

    friend Place operator+(Place a, Place b) { return {a.x + b.x, a.y + b.y}; }
    friend Place operator-(Place a, Place b) { return {a.x - b.x, a.y - b.y}; }
    friend Place operator*(Place a, double s) { return {a.x * s, a.y * s}; }
};

inline double length(Place a) { return std::hypot(a.x, a.y); }
inline Place leftOf(Place a) { return {-a.y, a.x}; }

/// One piece of what is stroked; smooth[i] belongs to points[i] and says that it lies in a curve.
struct Polyline {
    std::vector<Place> points;
    std::vector<bool> smooth;
    bool isClosed = false;
    Place dotDirection = {1.0, 0.0};  ///< counts when there is only one point

    size_t edgeCount() const { return isClosed ? points.size() : points.size() - 1; }
    Place point(size_t i) const { return points[i % points.size()]; }
    Place direction(size_t edge) const {
        if (points.size() == 1) return dotDirection;
        const Place step = point(edge + 1) - point(edge);
        return step * (1.0 / length(step));
    }
};

/// All places that satisfy every constraint: half planes and, if its radius is above 0, a disc.
struct ConvexShape {
    struct HalfPlane {
        Place origin;
        Place outwards;  ///< of length 1
    };
    std::vector<HalfPlane> sides;
    Place center;
    double radius = 0.0;

    static ConvexShape polygon(const std::vector<Place>& corners) {
        ConvexShape shape;
        double area = 0.0;
        const size_t n = corners.size();
        for (size_t i = 0; i < n; ++i) {
            const Place a = corners[i] - corners[0], b = corners[(i + 1) % n] - corners[0];
            area += a.x * b.y - a.y * b.x;
        }
        for (size_t i = 0; i < n; ++i) {
            const Place step = corners[(i + 1) % n] - corners[i];
            if (length(step) < 1e-12) continue;
            shape.sides.push_back(
                {corners[i], leftOf(step) * ((area > 0.0 ? -1.0 : 1.0) / length(step))});
        }
        return shape;
    }

    /// The sector of a disc between two radii, at most half of it, on the side of `towards`.
    static ConvexShape sector(Place center, Place from, Place to, Place towards) {
        ConvexShape shape;
        shape.center = center;
        shape.radius = length(from);
        for (const Place& ray : {from, to}) {
            const Place across = leftOf(ray) * (1.0 / shape.radius);
            const bool isInwards = across.x * towards.x + across.y * towards.y > 0.0;
            shape.sides.push_back({center, across * (isInwards ? -1.0 : 1.0)});
        }
        return shape;
    }

    /// Grown by `margin`, its disc by `roundMargin` (both negative to shrink).
    bool contains(Place p, double margin, double roundMargin) const {
        if (radius > 0.0 && length(p - center) > radius + roundMargin) return false;
        return std::all_of(sides.begin(), sides.end(), [&](const HalfPlane& side) {
            const Place d = p - side.origin;
            return d.x * side.outwards.x + d.y * side.outwards.y <= margin;
        });
    }
};

class StrokeReference {
public:
    StrokeReference(const std::vector<Polyline>& lines, const StrokeParams& params)
        : params_(params), h_(static_cast<double>(params.halfWidth)) {
        for (const Polyline& line : lines) add(line);
    }

    enum class Verdict { kInside, kOutside, kTooClose };

    Verdict at(Place p) const {
        const double margin = 1e-4;
        const double r = static_cast<double>(params_.flatness);
        bool isNear = false;
        for (const ConvexShape& shape : shapes_) {
            if (shape.contains(p, -margin, -r - margin)) return Verdict::kInside;
            // The tip that stands for a round join of one step lies up to r / cos(45) outside.
            isNear |= shape.contains(p, 1.5 * r + margin, 1.5 * r + margin);
        }
        return isNear ? Verdict::kTooClose : Verdict::kOutside;
    }

    /// The definition itself, without any margin.
    bool covers(Place p) const {
        return std::any_of(shapes_.begin(), shapes_.end(),
                           [&](const ConvexShape& shape) { return shape.contains(p, 0.0, 0.0); });
    }

private:
    void add(const Polyline& line) {
        for (size_t i = 0; i < line.edgeCount(); ++i) addEdge(line, i);
        const size_t firstJoin = line.isClosed ? 0 : 1;
        for (size_t i = firstJoin; i < line.edgeCount(); ++i) addJoin(line, i);
        if (line.isClosed) return;
        const size_t last = std::max<size_t>(line.edgeCount(), 1) - 1;
        addCap(params_.startCap, line.points.front(), line.direction(0) * -1.0);
        addCap(params_.endCap, line.points.back(), line.direction(last));
    }

    void addEdge(const Polyline& line, size_t i) {
        const Place n = leftOf(line.direction(i)) * h_;
        const Place a = line.point(i), b = line.point(i + 1);
        shapes_.push_back(ConvexShape::polygon({a + n, b + n, b - n, a - n}));
    }

    void addJoin(const Polyline& line, size_t i) {
        const Place d0 = line.direction((i + line.edgeCount() - 1) % line.edgeCount());
        const Place d1 = line.direction(i);
        const double turn = d0.x * d1.y - d0.y * d1.x;
        const double cosine = d0.x * d1.x + d0.y * d1.y;
        if (std::abs(turn) < 1e-9 && cosine > 0.0) return;
        const Place v = line.point(i);
        const Place from = leftOf(d0) * (turn > 0.0 ? -h_ : h_);
        const Place to = leftOf(d1) * (turn > 0.0 ? -h_ : h_);
        if (line.smooth[i]) {  // the normal turns, on the inner side as well
            shapes_.push_back(ConvexShape::sector(v, from * -1.0, to * -1.0, d1 - d0));
        }
        if (line.smooth[i] || params_.join == VG_JOIN_ROUND) {
            shapes_.push_back(ConvexShape::sector(v, from, to, d0 - d1));
            return;
        }
        std::vector<Place> corners = {v, v + from, v + to};
        const double miterLength = h_ / std::sqrt((1.0 + cosine) / 2.0);
        const bool isMiter = miterLength * miterLength <= params_.miterLengthSquared;
        if (params_.join == VG_JOIN_MITER && isMiter) {
            const Place middle = from + to;
            corners.insert(corners.begin() + 2, v + middle * (miterLength / length(middle)));
        }
        shapes_.push_back(ConvexShape::polygon(corners));
    }

    void addCap(VGint style, Place center, Place outwards) {
        const Place out = outwards * h_, side = leftOf(out);
        if (style == VG_CAP_ROUND) {
            shapes_.push_back(ConvexShape::sector(center, side, side * -1.0, out));
        } else if (style == VG_CAP_SQUARE) {
            shapes_.push_back(ConvexShape::polygon(
                {center + side, center + side + out, center - side + out, center - side}));
        }
    }

    StrokeParams params_;
    double h_;
    std::vector<ConvexShape> shapes_;
};

inline test::Commands commandsOf(const Polyline& line) {
    test::Commands commands;
    for (const Place& p : line.points) {
        commands.push_back(
            {commands.empty() ? uint8_t{VG_MOVE_TO} : uint8_t{VG_LINE_TO}, {p.x, p.y}});
    }
    if (line.isClosed) commands.push_back({VG_CLOSE_PATH, {}});
    return commands;
}

/// A subpath of curves as very many lines, the first and the last of each curve along its tangent.
inline Polyline finely(const test::Commands& subpath, int count) {
    Polyline line;
    Vector2 at;
    const auto push = [&](Vector2 p, bool isSmooth) {
        if (!line.points.empty() && length(line.points.back() - Place{p.x, p.y}) < 1e-9) return;
        line.points.push_back({p.x, p.y});
        line.smooth.push_back(isSmooth);
    };
    for (const test::Command& command : subpath) {
        const std::vector<double>& v = command.values;
        if (command.code == VG_CLOSE_PATH) {
            line.isClosed = true;
            continue;
        }
        const Vector2 end = {v[v.size() - 2], v[v.size() - 1]};
        if (command.code >= VG_QUAD_TO) {
            const std::vector<Vector2> samples = test::sample(at, command, count * 1000);
            push(samples[1], true);
            for (int i = 1; i < count; ++i) push(samples[static_cast<size_t>(i) * 1000], true);
            push(samples[samples.size() - 2], true);
        }
        push(end, false);
        at = end;
    }
    return line;
}

/// Cuts a polyline by going through the pattern step by step; `phase` is carried along.
inline std::vector<Polyline> cutIntoDashes(const Polyline& line, const std::vector<float>& pattern,
                                           double& phase) {
    size_t element = 0;
    double left = phase;  // first how far into the pattern, then how much of the element is left
    while (left >= static_cast<double>(pattern[element])) {
        left -= static_cast<double>(pattern[element]);
        element = (element + 1) % pattern.size();
    }
    left = static_cast<double>(pattern[element]) - left;
    const bool startsOn = element % 2 == 0;
    std::vector<Polyline> dashes;
    if (startsOn) dashes.push_back({{line.points[0]}, {false}});
    for (size_t i = 0; i < line.edgeCount(); ++i) {
        const Place direction = line.direction(i);
        double rest = length(line.point(i + 1) - line.point(i));
        phase += rest;
        Place at = line.point(i);
        while (left < rest) {
            at = at + direction * left;
            rest -= left;
            if (element % 2 == 0) {
                dashes.back().points.push_back(at);
                dashes.back().smooth.push_back(false);
            } else {
                dashes.push_back({{at}, {false}});
            }
            element = (element + 1) % pattern.size();
            left = static_cast<double>(pattern[element]);
        }
        left -= rest;
        if (element % 2 == 0) {
            dashes.back().points.push_back(line.point(i + 1));
            dashes.back().smooth.push_back(line.smooth[(i + 1) % line.points.size()]);
        }
    }
    const bool endsOn = element % 2 == 0;
    if (line.isClosed && startsOn && endsOn) {
        if (dashes.size() == 1) return {line};
        Polyline seam = dashes.back();
        seam.smooth.back() = line.smooth[0];
        const Polyline& first = dashes.front();
        seam.points.insert(seam.points.end(), first.points.begin() + 1, first.points.end());
        seam.smooth.insert(seam.smooth.end(), first.smooth.begin() + 1, first.smooth.end());
        dashes.pop_back();
        dashes.front() = seam;
    }
    return dashes;
}

/// How often the outline goes round a place.
inline int windingNumber(const Outline& outline, Place p) {
    int winding = 0;
    int32_t start = 0;
    for (int32_t size : outline.contourSizes) {
        for (int32_t i = 0; i < size; ++i) {
            const raster::Point a = outline.points[start + i];
            const raster::Point b = outline.points[start + (i + 1) % size];
            if ((a.y <= p.y) == (b.y <= p.y)) continue;
            const double t = (p.y - a.y) / (static_cast<double>(b.y) - a.y);
            if (a.x + t * (static_cast<double>(b.x) - a.x) > p.x) winding += a.y < b.y ? 1 : -1;
        }
        start += size;
    }
    return winding;
}

}  // namespace vg
