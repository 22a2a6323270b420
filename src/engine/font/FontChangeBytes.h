// Changes of a font in bytes, as its journal holds them; docs/font-file.md describes the layout.
#pragma once

#include "engine/font/Bytes.h"
#include "engine/font/FontChange.h"

namespace dravik::engine {

void encodeChange(ByteWriter& out, const FontChange& change);
// Refuses what no change is; see ByteReader.
FontChange decodeChange(ByteReader& in);

}  // namespace dravik::engine
