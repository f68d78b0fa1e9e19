#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "atlas.h"
#include "folder_walk.h"
#include "pack_command.h"
#include "session.h"

namespace tool {

/// A drawing that was loaded.
struct PackInput {
    FoundFile file;
    std::unique_ptr<Document> document;
    std::string frameName;  ///< of the drawing as a whole
};

/// What an atlas is made of: packs frames, then draws the sheets one by one.
class SheetSource {
public:
    virtual ~SheetSource() = default;

    /// Fills the sheets but for the names of their pictures. Problems of single drawings are
    /// reported on standard error and counted. Throws FileError.
    virtual void pack(std::vector<AtlasSheet>& sheets) = 0;

    /// Draws the frames of a sheet on a transparent surface of its size, without extruding them.
    virtual void draw(std::uint32_t sheet, std::uint32_t surface) = 0;

    /// How many problems left something out.
    int problems() const { return problems_; }

protected:
    int problems_ = 0;
};

/// One frame a drawing.
std::unique_ptr<SheetSource> packWholeDrawings(const PackOptions& options, const FrameScale& scale,
                                               std::vector<PackInput>& inputs);

/// One frame an element.
std::unique_ptr<SheetSource> packElements(const PackOptions& options, float scale,
                                          std::vector<PackInput>& inputs);

}  // namespace tool
