// A font as it is stored: character set, committed samples, and what the last training made of them. The
// layout of the bytes is described in docs/font-file.md.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "engine/font/FontParts.h"
#include "tool/FontTool.h"

namespace dravik::engine {

struct FontRecord {
    tool::CharacterSet characterSet;
    std::uint64_t nextSerial = 1;
    std::vector<Sample> samples;    // serials ascending
    std::vector<double> distances;  // one for each sample
    Training training;
};

// Bytes of a font file.
std::vector<std::uint8_t> encodeFont(const FontRecord& font);

// The font in these bytes. `file` names them in failures. Raises Device I/O error (57) saying what is wrong
// with bytes that are damaged, cut off, of another kind or of a later version.
FontRecord decodeFont(std::span<const std::uint8_t> bytes, const std::string& file);

// A font from and to its file; raise as readWholeFile(), writeWholeFile() and decodeFont() do.
std::vector<std::uint8_t> readFontBytes(const std::string& file);
FontRecord readFont(const std::string& file);
void writeFont(const FontRecord& font, const std::string& file);

// Deletes a font. This and writing keep what was in the file as its backup, but never replace a backup by a
// font that has neither samples nor training. Raises as retireFile() does.
void retireFont(const std::string& file);

}  // namespace dravik::engine
