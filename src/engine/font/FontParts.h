// What a font consists of - characters, samples, training - and how each stands in bytes, in font files and
// in the journal alike. The layout is described in docs/font-file.md.
#pragma once

#include <cstdint>
#include <vector>

#include "engine/classifier/Network.h"
#include "engine/font/Bytes.h"
#include "engine/segmentation/Sample.h"
#include "tool/FontTool.h"
#include "tool/Samples.h"

namespace dravik::engine {

// As many as identifiers name.
constexpr std::uint32_t kMostCharacters = static_cast<std::uint32_t>(tool::kMostSamples);
constexpr std::size_t kLongestCharacter = 16;  // bytes
// Sample numbers of a font end here, far beyond what can be reached.
constexpr std::uint64_t kLastSerial = std::uint64_t{1} << 62;
constexpr std::size_t kSampleSize = 8 + 4 + 8 + 4 * kInputCount;

// A character that the font was trained on.
struct TrainedCharacter {
    std::int32_t code = 0;
    std::int32_t count = 0;  // samples
    SampleInputs mean{};

    friend bool operator==(const TrainedCharacter&, const TrainedCharacter&) = default;
};

// What a training run leaves.
struct Training {
    Network network;
    std::vector<TrainedCharacter> characters;  // by code, ascending, without repeats

    bool empty() const noexcept { return network.empty(); }
    const TrainedCharacter* find(std::int32_t code) const;
    friend bool operator==(const Training&, const Training&) = default;
};

struct MeasuredSample {
    Sample sample;
    double distance = 0;
};

// Raises Invalid procedure call (5) for a set that no font file holds: a character that is not 1 to 16 bytes
// of printable UTF-8, or one that is there twice.
void checkCharacterSet(const tool::CharacterSet& set);

// Decoding refuses numbers that are out of range; see ByteReader.
void encodeCharacterSet(ByteWriter& out, const tool::CharacterSet& set);
tool::CharacterSet decodeCharacterSet(ByteReader& in);
void encodeSample(ByteWriter& out, const MeasuredSample& one);
MeasuredSample decodeSample(ByteReader& in);
void encodeTraining(ByteWriter& out, const Training& training);
Training decodeTraining(ByteReader& in);

}  // namespace dravik::engine
