#include "pack_command.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <new>
#include <sstream>

#include "atlas.h"
#include "atlas_output.h"
#include "element_places.h"
#include "file_error.h"
#include "file_watch.h"
#include "frame_names.h"
#include "input_file.h"
#include "library_error.h"
#include "png_writer.h"
#include "progress.h"
#include "rejected_document.h"
#include "session.h"
#include "sheet_pixels.h"
#include "sheet_source.h"

namespace tool {

namespace {

namespace fs = std::filesystem;

/// "1.5" for 1.5.
std::string numberText(double number) {
    std::ostringstream text;
    text << number;
    return text.str();
}

std::unique_ptr<Document> loadDocument(const std::string& path, FrameUnit unit) {
    std::string text = readInputText(path);
    if (unit != FrameUnit::kFile) text = withPlaces(text);
    auto document = std::make_unique<Document>(quorDocCreate(text.c_str()));
    if (!document->isValid()) throw explainRejectedDocument(text);
    return document;
}

/// One set of sheets.
struct AtlasVariant {
    FrameScale scale;
    std::string suffix;  ///< behind the name of the atlas: "@2x"
};

std::vector<AtlasVariant> variantsOf(const PackOptions& options) {
    std::vector<AtlasVariant> variants;
    for (const std::uint32_t size : options.sizes) {
        FrameScale scale;
        scale.longestSide = size;
        variants.push_back({scale, "@" + std::to_string(size)});
    }
    for (const float factor : options.scales) {
        FrameScale scale;
        scale.scale = factor;
        variants.push_back({scale, "@" + numberText(factor) + "x"});
    }
    if (variants.empty()) {
        FrameScale scale;
        scale.width = options.width;
        scale.height = options.height;
        variants.push_back({scale, ""});
    }
    if (variants.size() == 1) variants[0].suffix.clear();
    return variants;
}

/// Makes the atlas of one scale.
class AtlasRun {
public:
    AtlasRun(const PackOptions& options, std::vector<PackInput>& inputs,
             const AtlasVariant& variant, AtlasOutput& output)
        : options_(options), output_(output) {
        baseName_ = fs::path(options.output).filename().string() + variant.suffix;
        atlas_.scale = variant.scale.isFitted() ? 1.0 : variant.scale.scale;
        source_ = options.unit == FrameUnit::kFile
                      ? packWholeDrawings(options, variant.scale, inputs)
                      : packElements(options, variant.scale.scale, inputs);
    }

    /// False when something is left out or there is nothing.
    bool run() {
        const auto start = std::chrono::steady_clock::now();
        source_->pack(atlas_.sheets);
        if (atlas_.sheets.empty()) {
            std::fprintf(stderr,
                         "%s: nothing is packed, for nothing shows or fits; no sheet is "
                         "written\n",
                         baseName_.c_str());
            return false;
        }
        for (std::size_t i = 0; i < atlas_.sheets.size(); ++i)
            atlas_.sheets[i].image = baseName_ + "-" + std::to_string(i) + ".png";
        writeSheets();
        writeDescriptions();
        const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
        printSummary(time.count());
        return source_->problems() == 0;
    }

private:
    void writeSheets() {
        Progress progress(atlas_.sheets.size());
        for (std::size_t i = 0; i < atlas_.sheets.size(); ++i) {
            const AtlasSheet& sheet = atlas_.sheets[i];
            progress.show(i + 1, sheet.image);
            const Surface surface(quorSurfaceCreate(sheet.width, sheet.height));
            if (!surface.isValid()) throwOutOfMemory();
            source_->draw(static_cast<std::uint32_t>(i), surface.get());
            writeSheet(output_.temporaryPath(sheet.image), sheet, surface.get(), options_.extrude,
                       options_.dilates);
            output_.commit(sheet.image);
            if (options_.writesPreview) pictures_.push_back(output_.read(sheet.image));
        }
    }

    void writeDescriptions() {
        std::vector<AtlasDescription> descriptions = describe();
        if (options_.writesPreview)
            descriptions.push_back({".html", describeAsPage(atlas_, baseName_, pictures_)});
        std::vector<std::string> files;
        for (const AtlasSheet& sheet : atlas_.sheets) files.push_back(sheet.image);
        for (const AtlasDescription& description : descriptions)
            files.push_back(baseName_ + description.suffix);
        listFiles(descriptions, files);
        for (const AtlasDescription& description : descriptions)
            output_.write(baseName_ + description.suffix, description.text);
    }

    std::vector<AtlasDescription> describe() const {
        switch (static_cast<AtlasFormat>(options_.format)) {
            case AtlasFormat::kJsonArray:
                return describeAsJsonArray(atlas_, baseName_);
            case AtlasFormat::kText:
                return describeAsText(atlas_, baseName_);
            case AtlasFormat::kCss:
                return describeAsCss(atlas_, baseName_);
            case AtlasFormat::kJsonHash:
                break;
        }
        return describeAsJsonHash(atlas_, baseName_);
    }

    void printSummary(double seconds) const {
        double used = 0;
        double all = 0;
        std::size_t count = 0;
        for (const AtlasSheet& sheet : atlas_.sheets) {
            all += double{1} * sheet.width * sheet.height;
            count += sheet.frames.size();
            for (const AtlasFrame& frame : sheet.frames)
                used += double{1} * frame.width * frame.height;
        }
        const auto plural = [](std::size_t n) { return n == 1 ? "" : "s"; };
        std::printf("%s: %zu frame%s on %zu sheet%s, %.1f %% occupied, %.2f s\n", baseName_.c_str(),
                    count, plural(count), atlas_.sheets.size(), plural(atlas_.sheets.size()),
                    100 * used / all, seconds);
        std::fflush(stdout);
    }

    const PackOptions& options_;
    AtlasOutput& output_;
    std::unique_ptr<SheetSource> source_;
    std::string baseName_;
    Atlas atlas_{};
    std::vector<std::string> pictures_;  ///< PNG files, for the preview
};

/// The drawings that load, under names that do not depend on which do.
std::vector<PackInput> loadInputs(const PackOptions& options, const std::vector<FoundFile>& files) {
    std::vector<PackInput> inputs;
    FrameNames names(options.trimsNames);
    Progress progress(files.size());
    for (std::size_t i = 0; i < files.size(); ++i) {
        progress.show(i + 1, displayName(files[i].path));
        const std::string name = names.nameOf(files[i]);
        try {
            inputs.push_back({files[i], loadDocument(files[i].path, options.unit), name});
        } catch (const FileError& error) {
            progress.clear();
            report(files[i].path, error);
        }
    }
    return inputs;
}

/// A folder that cannot be read is named.
std::vector<FoundFile> listDrawings(const PackOptions& options) {
    std::vector<FoundFile> files = findDrawings(options.inputs);
    if (files.empty()) {
        throw FileError(options.inputs.front() +
                        ": there is no .svg file; name files or a folder that holds some");
    }
    return files;
}

bool packAll(const PackOptions& options) {
    AtlasOutput output(options.output);
    const std::vector<FoundFile> files = listDrawings(options);
    std::vector<PackInput> inputs = loadInputs(options, files);
    bool isComplete = inputs.size() == files.size();
    for (const AtlasVariant& variant : variantsOf(options))
        isComplete &= AtlasRun(options, inputs, variant, output).run();
    output.removeStale();
    return isComplete;
}

bool packOnce(const PackOptions& options) {
    constexpr std::uint32_t kScreenSide = 512;  // what percentages of a document refer to
    const Session session(kScreenSide, kScreenSide, options.dpi);
    try {
        requireSuccess(session.error());
        quorClearColor(0, 0, 0, 0);
        return packAll(options);
    } catch (const FileError& error) {
        std::fprintf(stderr, "%s\n", error.what());
    } catch (const std::bad_alloc&) {
        std::fprintf(stderr, "out of memory; pack fewer drawings or a smaller --scale\n");
    }
    return false;
}

/// Nothing while a folder is not readable: it may come back.
std::vector<std::string> watchedPaths(const PackOptions& options) {
    std::vector<std::string> paths;
    try {
        for (const FoundFile& file : findDrawings(options.inputs)) paths.push_back(file.path);
    } catch (const FileError&) {
    }
    return paths;
}

[[noreturn]] void watch(const PackOptions& options) {
    FileWatch files(watchedPaths(options));
    packOnce(options);
    while (true) {
        FileWatch::pause();
        const std::vector<std::string> changes = files.changesSince(watchedPaths(options));
        if (changes.empty()) continue;
        const auto start = std::chrono::steady_clock::now();
        packOnce(options);
        const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
        const std::string others =
            changes.size() > 1 ? " and " + std::to_string(changes.size() - 1) + " more" : "";
        std::printf("%s%s changed, packed again in %.2f s\n", changes.front().c_str(),
                    others.c_str(), time.count());
        std::fflush(stdout);
    }
}

}  // namespace

bool packFiles(const PackOptions& options) {
    if (options.watches) watch(options);
    return packOnce(options);
}

}  // namespace tool
