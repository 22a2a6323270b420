#include "engine/font/FontFile.h"

#include <algorithm>
#include <string_view>

#include "base/AtomicFile.h"
#include "base/Failure.h"
#include "engine/font/Bytes.h"
#include "engine/font/FontParts.h"
#include "engine/font/FontSections.h"

namespace dravik::engine {
namespace {

constexpr std::string_view kMagic = "TLXFONT\n";
constexpr std::uint32_t kPlainVersion = 1;  // without sections
constexpr std::uint32_t kVersion = 2;
constexpr std::size_t kHeaderSize = 8 + 4 + 4 + 8;
constexpr std::size_t kChecksumSize = 4;
constexpr std::uint64_t kLargestFile = 256u << 20;

}  // namespace

std::vector<std::uint8_t> encodeFont(const FontRecord& font) {
    ByteWriter out;
    out.bytes().reserve(kHeaderSize + font.samples.size() * kSampleSize + 65536);
    out.text(kMagic);
    out.u32(hasSections(font) ? kVersion : kPlainVersion);
    out.u32(kInputCount);
    const std::size_t sizePlace = out.bytes().size();
    out.u64(0);
    encodeCharacterSet(out, font.characterSet);
    out.u64(font.nextSerial);
    out.u32(font.samples.size());
    for (std::size_t i = 0; i < font.samples.size(); ++i)
        encodeSample(out, {font.samples[i], font.distances[i]});
    encodeTraining(out, font.training);
    encodeSections(out, font);
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
    in.check(version >= kPlainVersion && inputs == kInputCount, "its header is wrong");

    ByteReader body(covered.subspan(kHeaderSize), what);
    FontRecord font;
    font.characterSet = decodeCharacterSet(body);
    font.nextSerial = body.u64();
    body.check(font.nextSerial <= kLastSerial, "the number of its next sample is too large");
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
    body.check(body.atEnd() == (version == kPlainVersion), "its length does not go with its version");
    decodeSections(body, font);
    return font;
}

std::vector<std::uint8_t> readFontBytes(const std::string& file) {
    return readWholeFile(file, kLargestFile);
}

FontRecord readFont(const std::string& file) {
    return decodeFont(readFontBytes(file), file);
}

std::vector<std::uint8_t> checkedBytes(const FontRecord& font, const std::string& file) {
    std::vector<std::uint8_t> bytes = encodeFont(font);
    try {
        if (bytes.size() > kLargestFile) throw Failure(RuntimeError::OutOfMemory, "it is too large");
        decodeFont(bytes, file);
    } catch (const Failure& failure) {
        throw fileFailure(static_cast<RuntimeError>(failure.number()), "Cannot write", file,
                          "it could not be read again. " + failure.description());
    }
    return bytes;
}

void writeFontBytes(std::span<const std::uint8_t> bytes, const std::string& file, bool keepsBackup) {
    writeWholeFile(file, bytes, keepsBackup, [&](const std::string& written) {
        const std::vector<std::uint8_t> back = readWholeFile(written, bytes.size());
        if (!std::equal(back.begin(), back.end(), bytes.begin(), bytes.end()))
            throw fileFailure(RuntimeError::DeviceIoError, "Cannot write", file,
                              "what was written is read otherwise");
    });
}

void exportFont(const FontRecord& font, const std::string& file) {
    writeFontBytes(checkedBytes(font, file), file, false);
}

}  // namespace dravik::engine
