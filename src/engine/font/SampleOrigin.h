// Where a sample comes from: what it looked like, in which image and where. A font keeps it of each sample as
// far as it is known; nothing is learnt from it.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "engine/font/Bytes.h"
#include "engine/image/SmallPicture.h"
#include "engine/segmentation/Sample.h"

namespace dravik::engine {

constexpr std::size_t kLongestImageName = 4096;  // bytes

struct SourceImage {
    std::string name;          // its path
    std::uint64_t digest = 0;  // of its pixels, by whoever has named it; 0 when unknown
};

struct SampleOrigin {
    SmallPicture picture;                      // may be empty
    std::shared_ptr<const SourceImage> image;  // null when it has no name
    Region box;                                // of the character, in pixels of the image
};

// As a section of a font file and an entry of a journal hold the origins of samples, whose serial numbers
// ascend: each image once. Decoding gives them to those samples, and refuses what is out of range, in
// another order than encoding has it, or of a sample that is not there.
bool haveOrigins(std::span<const Sample> samples);
void encodeOrigins(ByteWriter& out, std::span<const Sample> samples);
void decodeOrigins(ByteReader& in, std::span<Sample> samples);

}  // namespace dravik::engine
