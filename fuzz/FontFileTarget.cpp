#include <algorithm>
#include <array>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "FuzzTargets.h"
#include "base/Failure.h"
#include "base/Text.h"
#include "engine/font/FontFile.h"
#include "engine/font/SampleOrigin.h"
#include "engine/font/SampleStore.h"
#include "engine/font/SampleTable.h"
#include "tool/Samples.h"

namespace dravik {

using namespace engine;
using namespace tool;
namespace {

constexpr std::string_view kMagic = "TLXFONT\n";
constexpr std::uint8_t kVersions[] = {1, 2};
constexpr std::size_t kHeader = 24;
constexpr std::size_t kSizePlace = 16;
constexpr std::size_t kEnd = 4;

std::uint32_t checksum(std::span<const std::uint8_t> bytes) {
    std::uint32_t value = ~0u;
    for (const std::uint8_t byte : bytes) {
        value ^= byte;
        for (int bit = 0; bit < 8; ++bit) value = (value >> 1) ^ ((value & 1) ? 0xEDB88320u : 0u);
    }
    return ~value;
}

void put(std::vector<std::uint8_t>& bytes, std::size_t place, std::uint64_t value, std::size_t size) {
    for (std::size_t i = 0; i < size; ++i) bytes[place + i] = static_cast<std::uint8_t>(value >> (8 * i));
}

// A header of a version and a checksum that fit, since a fuzzer would never guess them.
std::vector<std::uint8_t> wrapped(std::span<const std::uint8_t> body, std::uint8_t version) {
    std::vector<std::uint8_t> file = encodeFont({});
    file.resize(kHeader);
    file[kMagic.size()] = version;
    file.insert(file.end(), body.begin(), body.end());
    file.resize(file.size() + kEnd);
    put(file, kSizePlace, file.size(), 8);
    put(file, file.size() - kEnd, checksum(std::span(file).first(file.size() - kEnd)), kEnd);
    return file;
}

void use(FontRecord font) {
    if (font.samples.size() != font.distances.size()) std::abort();
    if (!font.training.empty()) {
        std::vector<float> outputs(font.training.network.codes.size());
        for (std::size_t i = 0; i < std::min<std::size_t>(font.samples.size(), 4); ++i)
            font.training.network.run(font.samples[i].inputs, outputs);
        for (const std::int32_t code : font.training.network.codes) characterOf(code);
    }
    for (const Sample& sample : font.samples)
        if (sample.origin && unpacked(sample.origin->picture).width() != sample.origin->picture.width)
            std::abort();
    SampleStore store;
    store.restore(font.samples, font.distances, font.nextSerial);
    Sample one;
    one.code = 'A';
    store.include({one});
    store.remove(SampleKind::Committed, 0);
    store.commit();
    const RecordTablePtr table =
        sampleTable(std::array{kAllCommitted}, kSampleFields, {}, store.columns(SampleKind::Uncommitted),
                    store.columns(SampleKind::Committed));
    for (const std::int32_t code : table->codes()) characterOf(code);
    for (const double distance : table->values())
        if (!(distance >= 0)) std::abort();
}

void tryFile(const std::vector<std::uint8_t>& file) {
    FontRecord font;
    try {
        font = decodeFont(file, "fuzzed.nnd");
    } catch (const Failure&) {
        return;
    }
    if (encodeFont(font) != file) std::abort();
    use(std::move(font));
}

}  // namespace

void tryFontFile(std::span<const std::uint8_t> bytes) {
    const bool whole =
        bytes.size() >= kMagic.size() && std::equal(kMagic.begin(), kMagic.end(), bytes.begin());
    if (whole) return tryFile({bytes.begin(), bytes.end()});
    for (const std::uint8_t version : kVersions) tryFile(wrapped(bytes, version));
}

}  // namespace dravik
