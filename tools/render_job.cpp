#include "render_job.h"

#include "document_edit.h"
#include "element_box.h"
#include "input_file.h"
#include "library_error.h"
#include "passed_over.h"
#include "rejected_document.h"
#include "session.h"
#include "trim.h"

namespace tool {

namespace {

std::string readDrawing(const FoundFile& input, const RenderOptions& options) {
    std::string text = readInputText(input.path);
    if (!options.element.empty()) text = isolated(text, options.element);
    if (!options.color.empty()) text = recolored(text, options.color);
    return text;
}

Placement placementOf(const std::string& text, const RenderOptions& options) {
    Placement placement = options.placement;
    if (options.element.empty() || placement.region) return placement;
    const Document document(quorDocCreate(text.c_str()));
    if (!document.isValid()) throw explainRejectedDocument(text);
    placement.region = boxOfDrawing(document.get());
    return placement;
}

/// The pixel that surfaces are cleared to.
std::uint32_t backgroundPixel() {
    const Surface surface(quorSurfaceCreate(1, 1));
    if (!surface.isValid()) throwOutOfMemory();
    requireSuccess(quorDocDraw(QUOR_INVALID_HANDLE, surface.get(), 0));
    return *quorSurfacePixels(surface.get());
}

PixelBox visiblePart(const Drawing& drawing, const PictureSize& size) {
    BoundsFinder finder(size.width, backgroundPixel());
    drawing.draw(size, [&](const auto* pixels, auto rows) { finder.take(pixels, rows); });
    if (const auto box = finder.box()) return *box;
    throw FileError("nothing of it is seen, so --trim leaves no picture; leave --trim out");
}

}  // namespace

void renderPicture(const RenderJob& job, const RenderOptions& options) {
    const std::string text = readDrawing(job.input, options);
    const Drawing drawing(text, placementOf(text, options));
    const PictureSize size = choosePictureSize(options.size, drawing.size());
    PixelBox box{0, 0, size.width, size.height};
    if (options.isTrimmed) box = visiblePart(drawing, size);
    const auto writer =
        openPicture(job.format, {job.output, box.width(), box.height()}, options.compression);
    const auto write = [&](const auto* pixels, auto rows) { writer->writeRows(pixels, rows); };
    if (options.isTrimmed) {
        Cropper cropper(size.width, box, write);
        drawing.draw(size, [&](const auto* pixels, auto rows) { cropper.take(pixels, rows); });
    } else {
        drawing.draw(size, write);
    }
    writer->finish();
}

std::string warningFor(const RenderJob& job) {
    if (job.input.path == kStandardStream) return {};  // it is read already
    std::string names;
    for (const PassedOver& part : findPassedOver(readInputText(job.input.path)))
        names += (names.empty() ? "" : ", ") + std::to_string(part.count) + " " + part.name +
                 " (line " + std::to_string(part.line) + ")";
    if (names.empty()) return {};
    return reportText(job.input.path, FileError("passed over: " + names));
}

}  // namespace tool
