// Fonts that are learnt from labelled sheets.
#pragma once

#include <stdexcept>

#include "engine/LabelledImages.h"
#include "engine/PngFile.h"
#include "engine/ToolActs.h"

namespace dravik {

// Into the tool's current font. Raises std::runtime_error when other than the sheet's characters are found.
inline void includeSheet(EmbeddedTool& tool, const LabelledImage& sheet) {
    tool.setImage(readPng(sheet.file));
    if (tool.found().size() != characterCount(sheet.text)) throw std::runtime_error(sheet.name);
    tool.IncludeSamples(sheet.text);
    tool.CommitNewSamples();
}

}  // namespace dravik
