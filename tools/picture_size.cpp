#include "picture_size.h"

#include <algorithm>
#include <cmath>
#include <sstream>
#include <string>

#include "file_error.h"

namespace tool {

namespace {

struct Size {
    double width;
    double height;

    bool hasArea() const { return width > 0 && height > 0; }
};

Size viewportSize(const DocumentSize& document) {
    const Size viewport{document.viewportWidth, document.viewportHeight};
    if (!viewport.hasArea()) {
        throw FileError(
            "its viewBox has no area, so no size follows from it; give both --width "
            "and --height, or correct the viewBox");
    }
    return viewport;
}

Size naturalSize(const DocumentSize& document) {
    if (document.width >= 0 && document.height >= 0) return {document.width, document.height};
    const Size viewport = viewportSize(document);
    const double aspect = viewport.width / viewport.height;
    if (document.width >= 0) return {document.width, document.width / aspect};
    if (document.height >= 0) return {document.height * aspect, document.height};
    const double scale = kDefaultSide / std::max(viewport.width, viewport.height);
    return {viewport.width * scale, viewport.height * scale};
}

/// `side` scaled as `known` scales to `wanted`.
double inProportion(double side, double known, double wanted) { return side * (wanted / known); }

Size requestedSize(const SizeRequest& request, const DocumentSize& document) {
    const double width = request.width.value_or(0);
    const double height = request.height.value_or(0);
    if (width > 0 && height > 0) return {width, height};
    const Size natural = naturalSize(document);
    if (!natural.hasArea()) {
        throw FileError(
            "the document gives itself a width or height of 0; give both --width and "
            "--height, or correct the document");
    }
    if (width > 0) return {width, inProportion(natural.height, natural.width, width)};
    if (height > 0) return {inProportion(natural.width, natural.height, height), height};
    return natural;
}

/// Text of a side length: short for huge ones, whole otherwise.
std::string sideText(double side) {
    std::ostringstream text;
    text << (side < 1e6 ? std::round(side) : side);
    return text.str();
}

[[noreturn]] void throwTooLarge(const Size& size) {
    const char* longer = size.width >= size.height ? "--width " : "--height ";
    throw FileError("the picture would have " + sideText(size.width) + " x " +
                    sideText(size.height) + " pixels, and a side can have " +
                    std::to_string(kLargestSide) + "; give " + longer +
                    std::to_string(kLargestSide) + " or less, without --scale");
}

}  // namespace

PictureSize choosePictureSize(const SizeRequest& request, const DocumentSize& document) {
    Size size = requestedSize(request, document);
    size = {size.width * request.scale, size.height * request.scale};
    if (std::round(std::max(size.width, size.height)) > kLargestSide) throwTooLarge(size);
    // A sliver still is a picture: what rounds to no pixel gets one.
    const auto pixels = [](double side) {
        return static_cast<std::uint32_t>(std::max(1.0, std::round(side)));
    };
    return {pixels(size.width), pixels(size.height)};
}

}  // namespace tool
