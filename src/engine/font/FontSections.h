// What a font file may hold beside the font itself, in sections of their own: each has a tag, a length and
// contents. A new kind of contents is a line in the table in FontSections.cpp and a member of FontRecord.
#pragma once

#include "engine/font/Bytes.h"
#include "engine/font/FontFile.h"

namespace dravik::engine {

// A font without any is stored as if there were none.
bool hasSections(const FontRecord& font);
void encodeSections(ByteWriter& out, const FontRecord& font);
// Up to the end of `in`. One that this program does not know is refused by its tag: it would be lost when the
// font is saved.
void decodeSections(ByteReader& in, FontRecord& font);

}  // namespace dravik::engine
