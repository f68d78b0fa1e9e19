#pragma once

// Paths to test with, and the slow, plain definition of what they draw.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

#include "vg/geometry/affine_map.h"
#include "vg/geometry/vector2.h"
#include "vg/path/path.h"
#include "vg/path/path_writer.h"

namespace vg::test {

/// A segment with absolute coordinates.
struct Command {
    uint8_t code;
    std::vector<double> values;
};
using Commands = std::vector<Command>;

inline constexpr uint8_t kRelative = VG_RELATIVE;

inline void appendAll(Path& path, const Commands& commands) {
    PathWriter writer(path);
    for (const Command& command : commands) writer.append(command.code, command.values.data());
    writer.commit();
}

/// Cut before every move but the first.
inline std::vector<Commands> subpathsOf(const Commands& commands) {
    std::vector<Commands> subpaths;
    for (const Command& command : commands) {
        if (command.code == VG_MOVE_TO) subpaths.emplace_back();
        subpaths.back().push_back(command);
    }
    return subpaths;
}

inline double distance(Vector2 a, Vector2 b) { return std::hypot(a.x - b.x, a.y - b.y); }

inline double distanceToSegment(Vector2 p, Vector2 a, Vector2 b) {
    const Vector2 d = b - a;
    const double squared = dot(d, d);
    const double t = squared > 0.0 ? std::clamp(dot(p - a, d) / squared, 0.0, 1.0) : 0.0;
    return distance(p, a + d * t);
}

inline double distanceToPolyline(Vector2 p, const std::vector<Vector2>& line) {
    double nearest = distance(p, line.front());
    for (size_t i = 1; i < line.size(); ++i) {
        nearest = std::min(nearest, distanceToSegment(p, line[i - 1], line[i]));
    }
    return nearest;
}

/// Samples of an elliptical arc by the formulas of SVG's implementation notes (centre by the
/// endpoint formula, angles by acos), which the engine does not use.
inline std::vector<Vector2> sampleArc(Vector2 from, const Command& arc, int count) {
    const std::vector<double>& v = arc.values;
    const Vector2 to{v[3], v[4]};
    const bool isLarge = arc.code >= VG_LCCWARC_TO;
    const bool isSweep = arc.code == VG_SCCWARC_TO || arc.code == VG_LCCWARC_TO;
    double rx = std::fabs(v[0]);
    double ry = std::fabs(v[1]);
    if (rx == 0.0 || ry == 0.0 || from == to) return {from, to};
    const double phi = v[2] * 3.14159265358979323846 / 180.0;
    const double c = std::cos(phi);
    const double s = std::sin(phi);
    const Vector2 d = (from - to) * 0.5;
    const Vector2 p{c * d.x + s * d.y, -s * d.x + c * d.y};
    const double reach = std::hypot(p.x / rx, p.y / ry);
    if (reach > 1.0) rx *= reach, ry *= reach;
    const double sum = rx * rx * p.y * p.y + ry * ry * p.x * p.x;
    double factor = std::sqrt(std::max(0.0, rx * rx * ry * ry - sum) / sum);
    if (isLarge == isSweep) factor = -factor;
    const Vector2 mid{factor * rx * p.y / ry, -factor * ry * p.x / rx};
    const Vector2 center =
        Vector2{c * mid.x - s * mid.y, s * mid.x + c * mid.y} + (from + to) * 0.5;
    const double first = std::atan2((p.y - mid.y) / ry, (p.x - mid.x) / rx);
    double sweep = std::atan2((-p.y - mid.y) / ry, (-p.x - mid.x) / rx) - first;
    if (isSweep && sweep < 0.0) sweep += 2.0 * 3.14159265358979323846;
    if (!isSweep && sweep > 0.0) sweep -= 2.0 * 3.14159265358979323846;
    std::vector<Vector2> samples;
    for (int i = 0; i <= count; ++i) {
        const double angle = first + sweep * i / count;
        const Vector2 e{rx * std::cos(angle), ry * std::sin(angle)};
        samples.push_back(center + Vector2{c * e.x - s * e.y, s * e.x + c * e.y});
    }
    samples.front() = from;
    samples.back() = to;
    return samples;
}

/// count + 1 points of one drawing segment (no shorthands), by its definition.
inline std::vector<Vector2> sample(Vector2 from, const Command& command, int count) {
    const std::vector<double>& v = command.values;
    if (command.code >= VG_SCCWARC_TO) return sampleArc(from, command, count);
    std::vector<Vector2> points;
    for (int i = 0; i <= count; ++i) {
        const double t = static_cast<double>(i) / count;
        const double u = 1.0 - t;
        if (command.code == VG_CUBIC_TO) {
            points.push_back(from * (u * u * u) + Vector2{v[0], v[1]} * (3 * u * u * t) +
                             Vector2{v[2], v[3]} * (3 * u * t * t) +
                             Vector2{v[4], v[5]} * (t * t * t));
        } else if (command.code == VG_QUAD_TO) {
            points.push_back(from * (u * u) + Vector2{v[0], v[1]} * (2 * u * t) +
                             Vector2{v[2], v[3]} * (t * t));
        } else {
            points.push_back(from * u + Vector2{v[0], v[1]} * t);
        }
    }
    return points;
}

/// The samples of all drawing segments of a single subpath that begins with a move.
inline std::vector<Vector2> sampleAll(const Commands& commands, int count) {
    std::vector<Vector2> points;
    Vector2 current;
    for (const Command& command : commands) {
        const std::vector<double>& v = command.values;
        if (command.code == VG_MOVE_TO) {
            current = {v[0], v[1]};
            points.push_back(current);
            continue;
        }
        const std::vector<Vector2> part = sample(current, command, count);
        points.insert(points.end(), part.begin() + 1, part.end());
        current = part.back();
    }
    return points;
}

/// Random values that floats hold exactly, so that storing them in a path changes nothing.
class Random {
public:
    explicit Random(uint32_t seed) : engine_(seed) {}
    double between(double low, double high) {
        const double unit = static_cast<double>(engine_()) / 4294967296.0;
        return static_cast<double>(static_cast<float>(low + (high - low) * unit));
    }
    int below(int count) { return static_cast<int>(engine_() % static_cast<uint32_t>(count)); }

    /// A line, a curve or an arc inside a square of that size.
    Command segment(double size) {
        static constexpr uint8_t kCodes[] = {VG_LINE_TO,    VG_QUAD_TO,   VG_CUBIC_TO,
                                             VG_SCCWARC_TO, VG_SCWARC_TO, VG_LCCWARC_TO,
                                             VG_LCWARC_TO};
        Command command{kCodes[below(7)], {}};
        if (command.code >= VG_SCCWARC_TO) {
            command.values = {between(size / 16, size), between(size / 16, size),
                              between(-400, 400)};
        }
        while (static_cast<int>(command.values.size()) < coordinatesOf(command.code)) {
            command.values.push_back(between(0, size));
        }
        return command;
    }
    /// A subpath of random segments that begins with a move.
    Commands subpath(double size, int segments) {
        Commands commands{{VG_MOVE_TO, {between(0, size), between(0, size)}}};
        for (int i = 0; i < segments; ++i) commands.push_back(segment(size));
        return commands;
    }
    AffineMap affine() {
        AffineMap map;
        for (double* entry : {&map.m00, &map.m01, &map.m10, &map.m11}) *entry = between(-2, 2);
        map.m02 = between(-50, 50);
        map.m12 = between(-50, 50);
        return map;
    }

private:
    std::mt19937 engine_;
};

}  // namespace vg::test
