#pragma once

#include <cstdint>
#include <initializer_list>
#include <random>
#include <string>

/// Drawings made of a seed alone, the same everywhere: a few dozen shapes of every kind with every
/// sort of paint, stroke and transform, some of them far out or of no size.
class RandomDrawing {
public:
    explicit RandomDrawing(uint32_t seed) : random_(seed) {}

    /// The text of a document with a viewBox of 100 by 100.
    std::string text() {
        std::string all =
            joined({"<svg xmlns='http://www.w3.org/2000/svg' "
                    "xmlns:xlink='http://www.w3.org/1999/xlink' "
                    "viewBox='0 0 100 100'><defs>",
                    gradients(), shape(" id='symbol'"), "</defs>"});
        for (int i = 0, count = 8 + below(16); i < count; ++i) all += element();
        return all + "</svg>";
    }

private:
    /// Calls in a list in braces come one after the other; in a sum they come in any order.
    static std::string joined(std::initializer_list<std::string> parts) {
        std::string all;
        for (const std::string& part : parts) all += part;
        return all;
    }

    /// Distributions of the standard library differ between its makers; remainders do not.
    int below(int bound) { return static_cast<int>(random_() % static_cast<uint32_t>(bound)); }
    bool oneIn(int n) { return below(n) == 0; }
    template <int kCount>
    std::string oneOf(const char* const (&choices)[kCount]) {
        return choices[below(kCount)];
    }

    /// In -20..120 with two decimals; now and then something far away.
    std::string number() {
        if (oneIn(200)) return std::to_string(below(2000) - 1000) + "e1";
        return hundredths(below(14000) - 2000);
    }
    std::string length() { return oneIn(40) ? "0" : hundredths(below(4000)); }
    std::string fraction() { return hundredths(below(110)); }
    static std::string hundredths(int value) {
        const int size = value < 0 ? -value : value;
        return joined({value < 0 ? "-" : "", std::to_string(size / 100), ".",
                       std::to_string(size % 100 + 100).substr(1)});
    }
    std::string numbers(int count) {
        std::string list;
        for (int i = 0; i < count; ++i) list += ' ' + number();
        return list;
    }

    static std::string attribute(const char* name, const std::string& value) {
        return joined({" ", name, "='", value, "'"});
    }
    std::string places(std::initializer_list<const char*> names) {
        std::string list;
        for (const char* name : names) list += attribute(name, number());
        return list;
    }
    std::string lengths(std::initializer_list<const char*> names) {
        std::string list;
        for (const char* name : names) list += attribute(name, length());
        return list;
    }

    std::string color() {
        std::string text = "#";
        for (int i = 0; i < 6; ++i) text += "0123456789abcdef"[below(16)];
        return text;
    }
    std::string paint() {
        if (oneIn(4)) return "url(#gradient" + std::to_string(below(4)) + ")";
        return color();
    }

    std::string gradients() {
        std::string list;
        for (int i = 0; i < 4; ++i) {
            const char* const name = i % 2 == 0 ? "linearGradient" : "radialGradient";
            list += joined({"<", name, attribute("id", "gradient" + std::to_string(i)),
                            attribute("spreadMethod", oneOf({"pad", "repeat", "reflect"})),
                            oneIn(2) ? attribute("gradientTransform", transform()) : "", ">",
                            stops(), "</", name, ">"});
        }
        return list;
    }
    std::string stops() {
        std::string list;
        for (int i = 0, count = 1 + below(4); i < count; ++i) {
            list +=
                joined({"<stop", attribute("offset", fraction()), attribute("stop-color", color()),
                        attribute("stop-opacity", oneIn(2) ? "1" : fraction()), "/>"});
        }
        return list;
    }

    std::string transform() {
        switch (below(4)) {
            case 0:
                return joined({"translate(", number(), ",", number(), ")"});
            case 1:
                return joined({"rotate(", number(), " 50 50)"});
            case 2:
                return joined({"matrix(1 ", fraction(), " -", fraction(), " 1", numbers(2), ")"});
            default:
                return joined({"scale(", hundredths(20 + below(300)), ")"});
        }
    }

    std::string style() {
        return joined({attribute("fill", oneIn(6) ? "none" : paint()),
                       attribute("fill-rule", oneOf({"nonzero", "evenodd"})),
                       oneIn(3) ? attribute("fill-opacity", fraction()) : "",
                       oneIn(5) ? attribute("transform", transform()) : "",
                       oneIn(2) ? stroke() : ""});
    }
    std::string stroke() {
        return joined({attribute("stroke", paint()),
                       attribute("stroke-width", hundredths(below(800))),
                       attribute("stroke-linecap", oneOf({"butt", "round", "square"})),
                       attribute("stroke-linejoin", oneOf({"miter", "round", "bevel"})),
                       oneIn(3) ? attribute("stroke-dasharray", numbers(2)) : "",
                       oneIn(4) ? attribute("stroke-opacity", fraction()) : "",
                       oneIn(6) ? attribute("vector-effect", "non-scaling-stroke") : ""});
    }

    std::string pathData() {
        std::string data = "M" + numbers(2);
        for (int i = 0, count = 1 + below(8); i < count; ++i) data += segment();
        return data;
    }
    std::string segment() {
        switch (below(7)) {
            case 0:
                return "L" + numbers(2);
            case 1:
                return "C" + numbers(6);
            case 2:
                return "Q" + numbers(4);
            case 3:
                return "S" + numbers(4);
            case 4:
                return joined({"A", length(), " ", length(), " ", number(), " ",
                               oneOf({"0 0", "0 1", "1 0", "1 1"}), numbers(2)});
            case 5:
                return joined({"H", number(), "v", number()});
            default:
                return oneIn(2) ? "z" : "zM" + numbers(2);
        }
    }

    /// One of every shape; `extra` goes among its attributes.
    std::string shape(const std::string& extra) {
        switch (below(7)) {
            case 0:
                return joined(
                    {"<rect", places({"x", "y"}), lengths({"width", "height", "rx"}), extra, "/>"});
            case 1:
                return joined({"<circle", places({"cx", "cy"}), lengths({"r"}), extra, "/>"});
            case 2:
                return joined(
                    {"<ellipse", places({"cx", "cy"}), lengths({"rx", "ry"}), extra, "/>"});
            case 3:
                return joined({"<line", places({"x1", "y1", "x2", "y2"}), extra, "/>"});
            case 4:
                return joined(
                    {"<polygon", attribute("points", numbers(2 * (2 + below(8)))), extra, "/>"});
            default:
                return joined({"<path", attribute("d", pathData()), extra, "/>"});
        }
    }

    std::string element() {
        if (!oneIn(8)) return shape(style());
        return joined({"<use xlink:href='#symbol'", places({"x", "y"}), style(), "/>"});
    }

    std::mt19937 random_;
};
