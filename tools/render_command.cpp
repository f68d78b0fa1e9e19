#include "render_command.h"

#include <cstdio>
#include <new>

#include "file_error.h"
#include "input_file.h"
#include "library_error.h"
#include "output_plan.h"
#include "png_writer.h"
#include "progress.h"
#include "rejected_document.h"
#include "session.h"

namespace tool {

namespace {

void applyAlignment(const RenderOptions& options, const Document& document) {
    std::uint32_t alignment[2];  // align, meet or slice
    requireSuccess(quorDocViewportAlignmentGet(document.get(), alignment));
    if (options.align) alignment[0] = *options.align;
    if (options.isSlice) alignment[1] = QUOR_SLICE;
    requireSuccess(quorDocViewportAlignmentSet(document.get(), alignment));
}

DocumentSize sizeOf(const Document& document) {
    float viewport[4];  // x, y, width, height
    requireSuccess(quorDocViewportGet(document.get(), viewport));
    return {quorDocWidth(document.get()), quorDocHeight(document.get()), viewport[2], viewport[3]};
}

void rotateAboutCentre(const Surface& surface, const PictureSize& size, float degrees) {
    const float transform[5] = {static_cast<float>(size.width) / 2,
                                static_cast<float>(size.height) / 2, degrees, 0, 0};
    requireSuccess(quorSurfaceViewportTransformSet(surface.get(), transform));
}

void renderFile(const std::string& input, const std::string& output, const RenderOptions& options) {
    const std::string text = readInputText(input);
    const Document document(quorDocCreate(text.c_str()));
    if (!document.isValid()) throw explainRejectedDocument(text);
    applyAlignment(options, document);
    const PictureSize size =
        choosePictureSize(options.size, sizeOf(document), quorSurfaceMaxDimension());
    const Surface surface(quorSurfaceCreate(size.width, size.height));
    if (!surface.isValid()) throwOutOfMemory();
    rotateAboutCentre(surface, size, options.rotation);
    requireSuccess(quorDocDraw(document.get(), surface.get(), options.quality));
    writePng(output, quorSurfacePixels(surface.get()), size.width, size.height);
}

void reportSummary(std::size_t total, const std::vector<std::string>& failed) {
    if (total < 2 || failed.empty()) return;
    std::fprintf(stderr, "quor: %zu of %zu files rendered; failed:\n", total - failed.size(),
                 total);
    for (const std::string& input : failed)
        std::fprintf(stderr, "  %s\n", displayName(input).c_str());
}

/// False, with a message on standard error, when the file failed.
bool tryRenderFile(const std::string& input, OutputPlan& outputs, const RenderOptions& options,
                   Progress& progress) {
    try {
        try {
            renderFile(input, outputs.pathFor(input), options);
            return true;
        } catch (const std::bad_alloc&) {
            throwOutOfMemory();
        }
    } catch (const FileError& error) {
        progress.clear();
        report(input, error);
        return false;
    }
}

bool renderAll(const RenderOptions& options) {
    OutputPlan outputs(options.output, options.inputs.size());
    Progress progress(options.inputs.size());
    std::vector<std::string> failed;
    std::size_t position = 0;
    for (const std::string& input : options.inputs) {
        progress.show(++position, displayName(input));
        if (!tryRenderFile(input, outputs, options, progress)) failed.push_back(input);
    }
    progress.clear();
    reportSummary(options.inputs.size(), failed);
    return failed.empty();
}

}  // namespace

bool renderFiles(const RenderOptions& options) {
    // Percentages of a document without a size of its own refer to the picture asked for.
    const std::uint32_t side =
        options.size.width.value_or(options.size.height.value_or(kDefaultSide));
    const Session session(options.size.width.value_or(side), options.size.height.value_or(side),
                          options.dpi);
    try {
        requireSuccess(session.error());
        const Color& color = options.background;
        quorClearColor(color.red, color.green, color.blue, color.alpha);
        return renderAll(options);
    } catch (const FileError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return false;
    }
}

}  // namespace tool
