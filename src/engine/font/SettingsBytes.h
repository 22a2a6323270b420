// The segmentation settings of a font in bytes, as its file and its journal hold them.
#pragma once

#include "engine/font/Bytes.h"
#include "engine/segmentation/SegmentationSettings.h"

namespace dravik::engine {

void encodeSettings(ByteWriter& out, const SegmentationSettings& settings);
// Refuses what no settings are; see ByteReader.
SegmentationSettings decodeSettings(ByteReader& in);

}  // namespace dravik::engine
