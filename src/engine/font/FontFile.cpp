#include "engine/font/FontFile.h"

#include <algorithm>
#include <string_view>

#include "base/AtomicFile.h"
#include "base/Failure.h"
#include "engine/font/Bytes.h"
#include "engine/font/FontParts.h"

namespace dravik::engine {
namespace {

constexpr std::string_view kMagic = "TLXFONT\n";
constexpr std::uint32_t kVersion = 1;
constexpr std::size_t kHeaderSize = 8 + 4 + 4 + 8;
constexpr std::size_t kChecksumSize = 4;
constexpr std::uint64_t kLargestFile = 256u << 20;
// A font with neither samples nor training is no larger.
constexpr std::uint64_t kLargestUntaught =
    kHeaderSize + 4 + kMostCharacters * (4 + kLongestCharacter) + 8 + 4 + 4 + 4 + kChecksumSize;

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

std::vector<std::uint8_t> encodeFont(const FontRecord& font) {
    ByteWriter out;
    out.bytes().reserve(kHeaderSize + font.samples.size() * kSampleSize + 65536);
    out.text(kMagic);
    out.u32(kVersion);
    out.u32(kInputCount);
    const std::size_t sizePlace = out.bytes().size();
    out.u64(0);
    encodeCharacterSet(out, font.characterSet);
    out.u64(font.nextSerial);
    out.u32(font.samples.size());
    for (std::size_t i = 0; i < font.samples.size(); ++i)
        encodeSample(out, {font.samples[i], font.distances[i]});
    encodeTraining(out, font.training);
    out.setWhole(sizePlace, out.bytes().size() + kChecksumSize, 8);
    out.u32(checksum(out.bytes()));
    return std::move(out.bytes());
}

FontRecord decodeFont(std::span<const std::uint8_t> bytes, const std::string& file) {
    const std::string what = "Font file \"" + file + "\"";
    ByteReader in(bytes, what);
    if (bytes.empty()) in.refuse("it is empty");
    if (bytes.size() < kMagic.size() ||
        !std::equal(kMagic.begin(), kMagic.end(), in.take(kMagic.size()).begin()))
        in.refuse("it is no font file");
    if (bytes.size() < kHeaderSize + kChecksumSize) in.refuse("damaged, it ends early");
    const std::uint32_t version = in.u32();
    const std::uint32_t inputs = in.u32();
    const std::uint64_t size = in.u64();
    // The checksum of a later version may lie elsewhere, so that its version must speak first.
    if (version > kVersion)
        in.refuse("it is of version " + std::to_string(version) + ", this program reads up to " +
                  std::to_string(kVersion));
    if (size > bytes.size()) in.refuse("damaged, it ends early");
    if (size != bytes.size()) in.refuse("damaged, it is longer than it should be");
    const auto covered = bytes.first(bytes.size() - kChecksumSize);
    if (ByteReader(bytes.last(kChecksumSize), what).u32() != checksum(covered))
        in.refuse("damaged, its checksum is wrong");
    in.check(version == kVersion && inputs == kInputCount, "its header is wrong");

    ByteReader body(covered.subspan(kHeaderSize), what);
    FontRecord font;
    font.characterSet = decodeCharacterSet(body);
    font.nextSerial = body.u64();
    const std::uint32_t samples = body.u32();
    if (samples > static_cast<std::uint32_t>(tool::kMostSamples))
        body.refuse("it holds " + std::to_string(samples) + " samples, and a font at most " +
                    std::to_string(tool::kMostSamples));
    body.check(samples <= body.left() / kSampleSize, "a count is too large");
    font.samples.reserve(samples);
    font.distances.reserve(samples);
    for (std::size_t i = 0; i < samples; ++i) {
        const MeasuredSample one = decodeSample(body);
        body.check(
            one.sample.serial < font.nextSerial && (i == 0 || font.samples[i - 1].serial < one.sample.serial),
            "its samples are out of order");
        font.samples.push_back(one.sample);
        font.distances.push_back(one.distance);
    }
    font.training = decodeTraining(body);
    body.check(body.atEnd(), "it is longer than it should be");
    return font;
}

std::vector<std::uint8_t> readFontBytes(const std::string& file) {
    return readWholeFile(file, kLargestFile);
}

FontRecord readFont(const std::string& file) {
    return decodeFont(readFontBytes(file), file);
}

void writeFont(const FontRecord& font, const std::string& file) {
    writeWholeFile(file, encodeFont(font), isWorthItsBackup(file));
}

void retireFont(const std::string& file) {
    retireFile(file, isWorthItsBackup(file));
}

}  // namespace dravik::engine
