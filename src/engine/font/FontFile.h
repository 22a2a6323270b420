// A font as it is stored: character set, committed samples, and what the last training made of them. The
// layout of the bytes is described in docs/font-file.md.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "engine/font/FontParts.h"
#include "engine/segmentation/SegmentationSettings.h"
#include "tool/FontTool.h"

namespace dravik::engine {

struct FontRecord {
    tool::CharacterSet characterSet;
    std::uint64_t nextSerial = 1;
    std::vector<Sample> samples;    // serials ascending
    std::vector<double> distances;  // one for each sample
    Training training;
    SegmentationSettings settings;
};

// Bytes of a font file.
std::vector<std::uint8_t> encodeFont(const FontRecord& font);

// The font in these bytes. `file` names them in failures. Raises Device I/O error (57) saying what is wrong
// with bytes that are damaged, cut off, of another kind or of a later version.
FontRecord decodeFont(std::span<const std::uint8_t> bytes, const std::string& file);

// A font from its file; raise as readWholeFile() and decodeFont() do.
std::vector<std::uint8_t> readFontBytes(const std::string& file);
FontRecord readFont(const std::string& file);

// The font to a file anywhere, of which nothing else is kept; a font's own file is written by writeFont()
// (see FontVersions.h). Raises as writeWholeFile() does, and Device I/O error (57) for a font that could not
// be read again.
void exportFont(const FontRecord& font, const std::string& file);

// Both halves of it.
std::vector<std::uint8_t> checkedBytes(const FontRecord& font, const std::string& file);
void writeFontBytes(std::span<const std::uint8_t> bytes, const std::string& file, bool keepsBackup);

}  // namespace dravik::engine
