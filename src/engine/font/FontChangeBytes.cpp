#include "engine/font/FontChangeBytes.h"

#include <memory>
#include <utility>

#include "engine/font/FontFile.h"
#include "engine/font/FontParts.h"
#include "engine/font/SampleOrigin.h"
#include "engine/font/SettingsBytes.h"

namespace dravik::engine {
namespace {

using tool::SampleKind;

// Samples without origins stand as they did before there were any.
enum class Kind : std::uint8_t {
    Add = 1,
    Commit,
    Remove,
    Characters,
    Training,
    Replace,
    AddWithOrigins,
    RemoveWithOrigin,
    Relabel,
    Settings = 20
};

struct Encode {
    ByteWriter& out;

    void kind(Kind value) const { out.whole(static_cast<std::uint8_t>(value), 1); }
    void record(const FontRecord& font) const {
        const std::vector<std::uint8_t> bytes = encodeFont(font);
        out.u32(bytes.size());
        out.raw(bytes);
    }

    void operator()(const AddUncommitted& change) const {
        const bool origins = haveOrigins(change.samples);
        kind(origins ? Kind::AddWithOrigins : Kind::Add);
        out.u32(change.samples.size());
        for (const Sample& sample : change.samples) encodeSample(out, {sample, 0});
        if (origins) encodeOrigins(out, change.samples);
    }
    void operator()(const CommitUncommitted& change) const {
        kind(Kind::Commit);
        out.u32(change.count);
    }
    void operator()(const RemoveSample& change) const {
        const std::span<const Sample> removed(&change.removed.sample, 1);
        kind(haveOrigins(removed) ? Kind::RemoveWithOrigin : Kind::Remove);
        out.whole(static_cast<std::uint8_t>(change.kind), 1);
        out.u32(change.place);
        encodeSample(out, change.removed);
        if (haveOrigins(removed)) encodeOrigins(out, removed);
    }
    void operator()(const RelabelSamples& change) const {
        kind(Kind::Relabel);
        out.i32(change.codeAfter);
        out.u32(change.serials.size());
        for (std::size_t i = 0; i < change.serials.size(); ++i) {
            out.u64(change.serials[i]);
            out.i32(change.codesBefore[i]);
            out.real(change.distancesBefore[i]);
        }
    }
    void operator()(const SetCharacters& change) const {
        kind(Kind::Characters);
        encodeCharacterSet(out, change.before);
        encodeCharacterSet(out, change.after);
    }
    void operator()(const SetSettings& change) const {
        kind(Kind::Settings);
        encodeSettings(out, change.before);
        encodeSettings(out, change.after);
    }
    void operator()(const SetTraining& change) const {
        kind(Kind::Training);
        encodeTraining(out, *change.before);
        encodeTraining(out, *change.after);
        out.u32(change.serials.size());
        for (std::size_t i = 0; i < change.serials.size(); ++i) {
            out.u64(change.serials[i]);
            out.real(change.distancesBefore[i]);
            out.real(change.distancesAfter[i]);
        }
    }
    void operator()(const ReplaceFont& change) const {
        kind(Kind::Replace);
        record(*change.before);
        record(*change.after);
    }
};

AddUncommitted decodeAdd(ByteReader& in, bool withOrigins) {
    AddUncommitted change;
    const std::size_t count = in.count(kSampleSize, tool::kMostSamples);
    for (std::size_t i = 0; i < count; ++i) change.samples.push_back(decodeSample(in).sample);
    if (withOrigins) decodeOrigins(in, change.samples);
    return change;
}

RemoveSample decodeRemove(ByteReader& in, bool withOrigin) {
    RemoveSample change;
    change.kind = static_cast<SampleKind>(in.whole(1));
    in.check(change.kind == SampleKind::Committed || change.kind == SampleKind::Uncommitted,
             "a kind of samples is unknown");
    change.place = in.u32();
    change.removed = decodeSample(in);
    if (withOrigin) decodeOrigins(in, std::span(&change.removed.sample, 1));
    return change;
}

double decodeDistance(ByteReader& in) {
    const double distance = in.real64();
    in.check(distance >= 0, "a Distance is negative");
    return distance;
}

RelabelSamples decodeRelabel(ByteReader& in) {
    RelabelSamples change;
    change.codeAfter = in.i32();
    const std::size_t count = in.count(20, tool::kMostSamples);
    for (std::size_t i = 0; i < count; ++i) {
        change.serials.push_back(in.u64());
        in.check(i == 0 || change.serials[i - 1] < change.serials[i], "its samples are out of order");
        change.codesBefore.push_back(in.i32());
        change.distancesBefore.push_back(decodeDistance(in));
    }
    return change;
}

SetTraining decodeSetTraining(ByteReader& in) {
    SetTraining change;
    change.before = std::make_shared<Training>(decodeTraining(in));
    change.after = std::make_shared<Training>(decodeTraining(in));
    const std::size_t count = in.count(24, tool::kMostSamples);
    for (std::size_t i = 0; i < count; ++i) {
        change.serials.push_back(in.u64());
        in.check(i == 0 || change.serials[i - 1] < change.serials[i], "its samples are out of order");
        change.distancesBefore.push_back(decodeDistance(in));
        change.distancesAfter.push_back(decodeDistance(in));
    }
    return change;
}

std::shared_ptr<const FontRecord> decodeRecord(ByteReader& in) {
    return std::make_shared<FontRecord>(decodeFont(in.take(in.count(1, in.left())), "kept font"));
}

}  // namespace

void encodeChange(ByteWriter& out, const FontChange& change) {
    std::visit(Encode{out}, change);
}

FontChange decodeChange(ByteReader& in) {
    switch (static_cast<Kind>(in.whole(1))) {
        case Kind::Add:
            return decodeAdd(in, false);
        case Kind::AddWithOrigins:
            return decodeAdd(in, true);
        case Kind::Commit:
            return CommitUncommitted{in.u32()};
        case Kind::Remove:
            return decodeRemove(in, false);
        case Kind::RemoveWithOrigin:
            return decodeRemove(in, true);
        case Kind::Relabel:
            return decodeRelabel(in);
        case Kind::Characters: {
            tool::CharacterSet before = decodeCharacterSet(in);
            return SetCharacters{std::move(before), decodeCharacterSet(in)};
        }
        case Kind::Settings: {
            const SegmentationSettings before = decodeSettings(in);
            return SetSettings{before, decodeSettings(in)};
        }
        case Kind::Training:
            return decodeSetTraining(in);
        case Kind::Replace: {
            auto before = decodeRecord(in);
            return ReplaceFont{std::move(before), decodeRecord(in)};
        }
    }
    in.refuse("a kind of change is unknown");
}

}  // namespace dravik::engine
