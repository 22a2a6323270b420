#include "engine/font/JournalEntry.h"

#include <algorithm>
#include <bit>
#include <chrono>
#include <string_view>
#include <utility>

#include "base/Failure.h"
#include "engine/font/FontChangeBytes.h"
#include "engine/font/SampleOrigin.h"

namespace dravik::engine {
namespace {

constexpr std::string_view kMagic = "TLXJRNL\n";
constexpr std::uint32_t kFirstVersion = 1;  // without the entries that name the origins of samples
constexpr std::uint32_t kVersion = 2;
constexpr std::size_t kHeadSize = kMagic.size() + 4;
constexpr std::size_t kEntryHead = 4 + 4 + 8;
constexpr std::size_t kChecksumSize = 4;
constexpr std::uint64_t kLongestText = 1 << 20;
constexpr std::int64_t kLatest = 9'000'000'000'000;  // milliseconds since 1970, in the year 2255

enum class Type : std::uint32_t {
    Change = 1,
    Ended,
    Amended,
    Undone,
    Redone,
    Known,
    LetGo,
    KnownWithOrigins
};

struct Encode {
    ByteWriter& out;

    void type(Type value) const { out.u32(static_cast<std::uint32_t>(value)); }
    void texts(const std::string& words, const std::string& screenState) const {
        out.countedText(words);
        out.countedText(screenState);
    }

    Type operator()(const FontChange& change) const {
        encodeChange(out, change);
        return Type::Change;
    }
    Type operator()(const ActEnded& act) const {
        texts(act.words, act.screenState);
        return Type::Ended;
    }
    Type operator()(const ActAmended& act) const {
        texts(act.words, act.screenState);
        return Type::Amended;
    }
    Type operator()(const ActUndone&) const { return Type::Undone; }
    Type operator()(const ActRedone&) const { return Type::Redone; }
    Type operator()(const KnownState& known) const {
        out.u64(known.digest);
        out.whole(known.saved.has_value(), 1);
        out.u32(known.saved.value_or(0));
        out.u32(known.uncommitted.size());
        for (const Sample& sample : known.uncommitted) encodeSample(out, {sample, 0});
        const bool origins = haveOrigins(known.uncommitted);
        if (origins) encodeOrigins(out, known.uncommitted);
        if (known.state) out.raw(encodeFont(*known.state));
        return origins ? Type::KnownWithOrigins : Type::Known;
    }
    Type operator()(const LetGo&) const { return Type::LetGo; }
};

KnownState decodeKnown(ByteReader& in, bool withOrigins) {
    KnownState known;
    known.digest = in.u64();
    const bool saved = in.whole(1) != 0;
    if (const std::uint32_t place = in.u32(); saved) known.saved = place;
    const std::size_t count = in.count(kSampleSize, tool::kMostSamples);
    for (std::size_t i = 0; i < count; ++i) known.uncommitted.push_back(decodeSample(in).sample);
    if (withOrigins) decodeOrigins(in, known.uncommitted);
    if (!in.atEnd()) known.state = std::make_shared<FontRecord>(decodeFont(in.take(in.left()), "kept font"));
    return known;
}

JournalEntry decodeEntry(Type type, ByteReader& in) {
    const auto text = [&in] { return in.countedText(kLongestText); };
    switch (type) {
        case Type::Change:
            return decodeChange(in);
        case Type::Ended: {
            std::string words = text();
            return ActEnded{std::move(words), text()};
        }
        case Type::Amended: {
            std::string words = text();
            return ActAmended{std::move(words), text()};
        }
        case Type::Undone:
            return ActUndone{};
        case Type::Redone:
            return ActRedone{};
        case Type::Known:
            return decodeKnown(in, false);
        case Type::KnownWithOrigins:
            return decodeKnown(in, true);
        case Type::LetGo:
            return LetGo{};
    }
    in.refuse("a kind of entry is unknown");
}

}  // namespace

tool::FontTime timeNow() {
    return std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
}

// FNV-1a over words of 64 bits, with the length and a last stirring.
FontDigest digestOf(std::span<const std::uint8_t> fontFile) {
    constexpr std::uint64_t kPrime = 0x100000001B3;
    std::uint64_t value = 0xCBF29CE484222325 ^ fontFile.size();
    for (; !fontFile.empty(); fontFile = fontFile.subspan(std::min<std::size_t>(8, fontFile.size()))) {
        std::uint64_t word = 0;
        for (std::size_t i = 0; i < std::min<std::size_t>(8, fontFile.size()); ++i)
            word |= static_cast<std::uint64_t>(fontFile[i]) << (8 * i);
        value = std::rotl((value ^ word) * kPrime, 29);
    }
    value = (value ^ (value >> 32)) * kPrime;
    return value == 0 ? 1 : value;
}

std::vector<std::uint8_t> journalHead() {
    ByteWriter out;
    out.bytes().reserve(kHeadSize);
    out.text(kMagic);
    out.u32(kVersion);
    return std::move(out.bytes());
}

std::vector<std::uint8_t> encodeEntry(const TimedEntry& entry) {
    using Milliseconds = std::chrono::milliseconds;
    ByteWriter out;
    out.u32(0);
    out.u32(0);
    out.i64(std::chrono::duration_cast<Milliseconds>(entry.when.time_since_epoch()).count());
    const Type type = std::visit(Encode{out}, entry.entry);
    out.setWhole(0, out.bytes().size() - kEntryHead, 4);
    out.setWhole(4, static_cast<std::uint32_t>(type), 4);
    out.u32(checksum(out.bytes()));
    return std::move(out.bytes());
}

JournalContent readJournal(std::span<const std::uint8_t> bytes) {
    static const std::string kWhat = "Journal";
    JournalContent content;
    if (bytes.size() < kHeadSize || !std::equal(kMagic.begin(), kMagic.end(), bytes.begin())) return content;
    const std::uint32_t version = ByteReader(bytes.subspan(kMagic.size()), kWhat).u32();
    content.isLater = version > kVersion;
    content.isEarlier = version < kVersion;
    if (version < kFirstVersion || version > kVersion) return content;
    content.used = kHeadSize;
    for (;;) {
        const auto rest = bytes.subspan(content.used);
        if (rest.size() < kEntryHead + kChecksumSize) return content;
        ByteReader head(rest, kWhat);
        const std::size_t length = head.u32();
        const Type type{head.u32()};
        const std::int64_t time = head.i64();
        if (length > head.left() - kChecksumSize) return content;
        const std::size_t covered = kEntryHead + length;
        if (ByteReader(rest.subspan(covered), kWhat).u32() != checksum(rest.first(covered))) return content;
        try {
            ByteReader body(head.take(length), kWhat);
            TimedEntry entry{decodeEntry(type, body), {}};
            body.check(body.atEnd(), "an entry is longer than it should be");
            body.check(time >= 0 && time <= kLatest, "a time is out of range");
            entry.when = tool::FontTime{std::chrono::milliseconds(time)};
            content.entries.push_back(std::move(entry));
        } catch (const Failure&) {
            return content;
        }
        content.used += covered + kChecksumSize;
    }
}

}  // namespace dravik::engine
