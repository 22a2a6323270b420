#include "engine/font/FontFile.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <string_view>

#include "base/AtomicFile.h"
#include "base/Failure.h"

namespace dravik::engine {
namespace {

constexpr std::string_view kMagic = "TLXFONT\n";
constexpr std::uint32_t kVersion = 1;
constexpr std::size_t kHeaderSize = 8 + 4 + 4 + 8;
constexpr std::size_t kChecksumSize = 4;
constexpr std::uint64_t kLargestFile = 256u << 20;
constexpr std::uint32_t kMostCharacters =
    static_cast<std::uint32_t>(tool::kMostSamples);  // as identifiers name
constexpr std::uint32_t kMostUnits = 4096;
constexpr float kLargestInput = 1000;  // far beyond what any character has
constexpr std::size_t kSampleSize = 8 + 4 + 8 + 4 * kInputCount;
constexpr std::size_t kTrainedSize = 4 + 4 + 4 * kInputCount;
constexpr std::size_t kLongestCharacter = 16;
// A font with neither samples nor training is no larger.
constexpr std::uint64_t kLargestUntaught =
    kHeaderSize + 4 + kMostCharacters * (4 + kLongestCharacter) + 8 + 4 + 4 + 4 + kChecksumSize;

constexpr auto kChecksumTable = [] {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t i = 0; i < 256; ++i) {
        std::uint32_t value = i;
        for (int bit = 0; bit < 8; ++bit) value = (value >> 1) ^ ((value & 1) ? 0xEDB88320u : 0u);
        table[i] = value;
    }
    return table;
}();

std::uint32_t checksum(std::span<const std::uint8_t> bytes) {
    std::uint32_t value = 0xFFFFFFFFu;
    for (const std::uint8_t byte : bytes) value = (value >> 8) ^ kChecksumTable[(value ^ byte) & 0xFF];
    return ~value;
}

class Writer {
  public:
    void whole(std::uint64_t value, std::size_t size) {
        for (std::size_t i = 0; i < size; ++i) bytes_.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
    }
    void u32(std::size_t value) { whole(value, 4); }
    void i32(std::int32_t value) { whole(static_cast<std::uint32_t>(value), 4); }
    void real(float value) { whole(std::bit_cast<std::uint32_t>(value), 4); }
    void real(double value) { whole(std::bit_cast<std::uint64_t>(value), 8); }
    void reals(std::span<const float> values) {
        for (const float value : values) real(value);
    }
    void text(std::string_view value) { bytes_.insert(bytes_.end(), value.begin(), value.end()); }
    void setWhole(std::size_t place, std::uint64_t value) {
        for (std::size_t i = 0; i < 8; ++i) bytes_[place + i] = static_cast<std::uint8_t>(value >> (8 * i));
    }
    std::vector<std::uint8_t>& bytes() { return bytes_; }

  private:
    std::vector<std::uint8_t> bytes_;
};

class Reader {
  public:
    Reader(std::span<const std::uint8_t> bytes, const std::string& file) : rest_(bytes), file_(file) {}

    [[noreturn]] void refuse(const std::string& problem) const {
        throw Failure(RuntimeError::DeviceIoError, "Font file \"" + file_ + "\" cannot be used: " + problem);
    }
    void check(bool good, const char* problem) const {
        if (!good) refuse(std::string("damaged, ") + problem);
    }
    std::span<const std::uint8_t> take(std::size_t size) {
        if (size > rest_.size()) refuse("damaged, it ends early");
        const auto part = rest_.first(size);
        rest_ = rest_.subspan(size);
        return part;
    }
    std::uint64_t whole(std::size_t size) {
        std::uint64_t value = 0;
        const auto part = take(size);
        for (std::size_t i = 0; i < size; ++i) value |= static_cast<std::uint64_t>(part[i]) << (8 * i);
        return value;
    }
    std::uint32_t u32() { return static_cast<std::uint32_t>(whole(4)); }
    std::int32_t i32() { return static_cast<std::int32_t>(u32()); }
    float real32() {
        const float value = std::bit_cast<float>(u32());
        check(std::isfinite(value), "a number is undefined");
        return value;
    }
    double real64() {
        const double value = std::bit_cast<double>(whole(8));
        check(std::isfinite(value), "a number is undefined");
        return value;
    }
    // A count of elements of `size` bytes each, which must still be there.
    std::size_t count(std::size_t size, std::uint64_t most) {
        const std::uint32_t value = u32();
        check(value <= most && value <= rest_.size() / size, "a count is too large");
        return value;
    }
    void reals(std::span<float> values) {
        for (float& value : values) value = real32();
    }
    std::vector<float> realVector(std::size_t count) {
        check(count <= rest_.size() / 4, "a count is too large");
        std::vector<float> values(count);
        reals(values);
        return values;
    }
    std::size_t left() const { return rest_.size(); }
    bool atEnd() const { return rest_.empty(); }

  private:
    std::span<const std::uint8_t> rest_;
    const std::string& file_;
};

void encodeTraining(Writer& out, const Training& training) {
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

Training decodeTraining(Reader& in) {
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
    in.check(net.hidden >= 1 && net.hidden <= kMostUnits, "its network has no usable size");
    for (std::size_t i = 0; i < outputs; ++i) net.codes.push_back(in.i32());
    net.means = in.realVector(kInputCount);
    net.scales = in.realVector(kInputCount);
    net.first = in.realVector(kInputCount * net.hidden);
    net.firstBias = in.realVector(net.hidden);
    net.second = in.realVector(net.hidden * outputs);
    net.secondBias = in.realVector(outputs);
    return training;
}

// Whether what is in the file may take the place of the backup that there is. A font is written several times
// while it is made and has no samples yet; the backup is that of the font which it replaced.
bool isWorthItsBackup(const std::string& file) {
    if (!fileExists(backupOf(file))) return true;
    try {
        const FontRecord font = decodeFont(readWholeFile(file, kLargestUntaught), file);
        return !font.samples.empty() || !font.training.empty();
    } catch (const Failure&) {
        return true;  // larger, or not to be read here, as a later version
    }
}

}  // namespace

const TrainedCharacter* Training::find(std::int32_t code) const {
    const auto place =
        std::lower_bound(characters.begin(), characters.end(), code,
                         [](const TrainedCharacter& one, std::int32_t c) { return one.code < c; });
    return place != characters.end() && place->code == code ? &*place : nullptr;
}

std::vector<std::uint8_t> encodeFont(const FontRecord& font) {
    Writer out;
    out.bytes().reserve(kHeaderSize + font.samples.size() * kSampleSize + 65536);
    out.text(kMagic);
    out.u32(kVersion);
    out.u32(kInputCount);
    const std::size_t sizePlace = out.bytes().size();
    out.whole(0, 8);
    out.u32(font.characterSet.size());
    for (const std::string& character : font.characterSet) {
        out.u32(character.size());
        out.text(character);
    }
    out.whole(font.nextSerial, 8);
    out.u32(font.samples.size());
    for (std::size_t i = 0; i < font.samples.size(); ++i) {
        const Sample& sample = font.samples[i];
        out.whole(sample.serial, 8);
        out.i32(sample.code);
        out.real(font.distances[i]);
        out.reals(sample.inputs);
    }
    encodeTraining(out, font.training);
    out.setWhole(sizePlace, out.bytes().size() + kChecksumSize);
    out.u32(checksum(out.bytes()));
    return std::move(out.bytes());
}

FontRecord decodeFont(std::span<const std::uint8_t> bytes, const std::string& file) {
    Reader in(bytes, file);
    if (bytes.empty()) in.refuse("it is empty");
    if (bytes.size() < kMagic.size() ||
        !std::equal(kMagic.begin(), kMagic.end(), in.take(kMagic.size()).begin()))
        in.refuse("it is no font file");
    if (bytes.size() < kHeaderSize + kChecksumSize) in.refuse("damaged, it ends early");
    const std::uint32_t version = in.u32();
    const std::uint32_t inputs = in.u32();
    const std::uint64_t size = in.whole(8);
    // The checksum of a later version may lie elsewhere, so that its version must speak first.
    if (version > kVersion)
        in.refuse("it is of version " + std::to_string(version) + ", this program reads up to " +
                  std::to_string(kVersion));
    if (size > bytes.size()) in.refuse("damaged, it ends early");
    if (size != bytes.size()) in.refuse("damaged, it is longer than it should be");
    const auto covered = bytes.first(bytes.size() - kChecksumSize);
    if (Reader(bytes.last(kChecksumSize), file).u32() != checksum(covered))
        in.refuse("damaged, its checksum is wrong");
    in.check(version == kVersion && inputs == kInputCount, "its header is wrong");

    Reader body(covered.subspan(kHeaderSize), file);
    FontRecord font;
    const std::size_t characters = body.count(4, kMostCharacters);
    for (std::size_t i = 0; i < characters; ++i) {
        const auto text = body.take(body.count(1, kLongestCharacter));
        font.characterSet.emplace_back(text.begin(), text.end());
    }
    font.nextSerial = body.whole(8);
    const std::uint32_t samples = body.u32();
    if (samples > static_cast<std::uint32_t>(tool::kMostSamples))
        body.refuse("it holds " + std::to_string(samples) + " samples, and a font at most " +
                    std::to_string(tool::kMostSamples));
    body.check(samples <= body.left() / kSampleSize, "a count is too large");
    font.samples.reserve(samples);
    font.distances.reserve(samples);
    for (std::size_t i = 0; i < samples; ++i) {
        Sample& sample = font.samples.emplace_back();
        sample.serial = body.whole(8);
        sample.code = body.i32();
        font.distances.push_back(body.real64());
        body.reals(sample.inputs);
        body.check(sample.serial < font.nextSerial && (i == 0 || font.samples[i - 1].serial < sample.serial),
                   "its samples are out of order");
        body.check(font.distances.back() >= 0, "a Distance is negative");
        body.check(std::all_of(sample.inputs.begin(), sample.inputs.begin() + tool::kFeatureCount,
                               [](float v) { return v >= 0 && v <= 1; }),
                   "a feature is out of range");
        body.check(std::abs(sample.inputs[kHeightInput]) <= kLargestInput &&
                       std::abs(sample.inputs[kOffsetInput]) <= kLargestInput,
                   "a height or offset is out of range");
    }
    font.training = decodeTraining(body);
    body.check(body.atEnd(), "it is longer than it should be");
    return font;
}

FontRecord readFont(const std::string& file) {
    return decodeFont(readWholeFile(file, kLargestFile), file);
}

void writeFont(const FontRecord& font, const std::string& file) {
    writeWholeFile(file, encodeFont(font), isWorthItsBackup(file));
}

void retireFont(const std::string& file) {
    retireFile(file, isWorthItsBackup(file));
}

}  // namespace dravik::engine
