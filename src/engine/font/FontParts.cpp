#include "engine/font/FontParts.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <unordered_set>

#include "base/Failure.h"
#include "base/Text.h"

namespace dravik::engine {
namespace {

constexpr std::uint32_t kMostUnits = 4096;
// Between units and outputs: 64 MB, and more than twice what a run with as many characters as there can be
// makes.
constexpr std::size_t kMostWeights = std::size_t{1} << 24;
constexpr float kLargestInput = 1000;  // far beyond what any character has
constexpr std::size_t kTrainedSize = 4 + 4 + 4 * kInputCount;

// What is wrong with a character set, "" when nothing is.
std::string problemOf(const tool::CharacterSet& set) {
    std::unordered_set<std::string_view> known;
    for (const std::string& character : set) {
        if (character.empty()) return "a character is empty";
        if (character.size() > kLongestCharacter) return "a character is too long";
        if (!isPrintable(character)) return "a character cannot be printed";
        if (!known.insert(character).second) return "a character is there twice";
    }
    return {};
}

}  // namespace

void checkCharacterSet(const tool::CharacterSet& set) {
    if (const std::string problem = problemOf(set); !problem.empty())
        throw Failure(RuntimeError::InvalidProcedureCall, "No font can have this character set: " + problem);
}

const TrainedCharacter* Training::find(std::int32_t code) const {
    const auto place =
        std::lower_bound(characters.begin(), characters.end(), code,
                         [](const TrainedCharacter& one, std::int32_t c) { return one.code < c; });
    return place != characters.end() && place->code == code ? &*place : nullptr;
}

void encodeCharacterSet(ByteWriter& out, const tool::CharacterSet& set) {
    out.u32(set.size());
    for (const std::string& character : set) out.countedText(character);
}

tool::CharacterSet decodeCharacterSet(ByteReader& in) {
    tool::CharacterSet set;
    const std::size_t characters = in.count(4, kMostCharacters);
    for (std::size_t i = 0; i < characters; ++i) set.push_back(in.countedText(kLongestCharacter));
    if (const std::string problem = problemOf(set); !problem.empty()) in.refuse("damaged, " + problem);
    return set;
}

void encodeSample(ByteWriter& out, const MeasuredSample& one) {
    out.u64(one.sample.serial);
    out.i32(one.sample.code);
    out.real(one.distance);
    out.reals(one.sample.inputs);
}

MeasuredSample decodeSample(ByteReader& in) {
    MeasuredSample one;
    one.sample.serial = in.u64();
    in.check(one.sample.serial < kLastSerial, "a number of a sample is too large");
    one.sample.code = in.i32();
    one.distance = in.real64();
    in.reals(one.sample.inputs);
    in.check(one.distance >= 0, "a Distance is negative");
    in.check(std::all_of(one.sample.inputs.begin(), one.sample.inputs.begin() + tool::kFeatureCount,
                         [](float v) { return v >= 0 && v <= 1; }),
             "a feature is out of range");
    in.check(std::abs(one.sample.inputs[kHeightInput]) <= kLargestInput &&
                 std::abs(one.sample.inputs[kOffsetInput]) <= kLargestInput,
             "a height or offset is out of range");
    return one;
}

void encodeTraining(ByteWriter& out, const Training& training) {
    const Network& net = training.network;
    out.u32(training.characters.size());
    for (const TrainedCharacter& character : training.characters) {
        out.i32(character.code);
        out.i32(character.count);
        out.reals(character.mean);
    }
    out.u32(net.codes.size());
    if (net.empty()) return;
    out.u32(net.hidden);
    for (const std::int32_t code : net.codes) out.i32(code);
    for (const auto* part :
         {&net.means, &net.scales, &net.first, &net.firstBias, &net.second, &net.secondBias})
        out.reals(*part);
}

Training decodeTraining(ByteReader& in) {
    Training training;
    const std::size_t characters = in.count(kTrainedSize, kMostCharacters);
    training.characters.reserve(characters);
    for (std::size_t i = 0; i < characters; ++i) {
        TrainedCharacter& character = training.characters.emplace_back();
        character.code = in.i32();
        character.count = in.i32();
        in.reals(character.mean);
        in.check(character.count >= 0, "a count is negative");
        in.check(i == 0 || training.characters[i - 1].code < character.code,
                 "its characters are out of order");
    }
    const std::size_t outputs = in.count(4, kMostCharacters);
    if (outputs == 0) return training;
    Network& net = training.network;
    net.hidden = in.u32();
    in.check(net.hidden >= 1 && net.hidden <= kMostUnits && outputs <= kMostWeights / net.hidden,
             "its network has no usable size");
    for (std::size_t i = 0; i < outputs; ++i) net.codes.push_back(in.i32());
    net.means = in.realVector(kInputCount);
    net.scales = in.realVector(kInputCount);
    net.first = in.realVector(kInputCount * net.hidden);
    net.firstBias = in.realVector(net.hidden);
    net.second = in.realVector(net.hidden * outputs);
    net.secondBias = in.realVector(outputs);
    return training;
}

}  // namespace dravik::engine
