#include "engine/font/FontSections.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "base/Text.h"
#include "engine/font/SampleOrigin.h"
#include "engine/font/SettingsBytes.h"

namespace dravik::engine {
namespace {

constexpr std::size_t kTagSize = 4;

struct Section {
    std::string_view tag;
    bool (*isThere)(const FontRecord& font);
    void (*encode)(ByteWriter& out, const FontRecord& font);
    void (*decode)(ByteReader& in, FontRecord& font);  // all of `in`
};

// In the order in which they stand in a file.
constexpr auto kSections = std::to_array<Section>({
    {"SEEN", [](const FontRecord& font) { return haveOrigins(font.samples); },
     [](ByteWriter& out, const FontRecord& font) { encodeOrigins(out, font.samples); },
     [](ByteReader& in, FontRecord& font) { decodeOrigins(in, font.samples); }},
    {"SEGM", [](const FontRecord& font) { return font.settings != SegmentationSettings{}; },
     [](ByteWriter& out, const FontRecord& font) { encodeSettings(out, font.settings); },
     [](ByteReader& in, FontRecord& font) { font.settings = decodeSettings(in); }},
});

}  // namespace

bool hasSections(const FontRecord& font) {
    return std::any_of(kSections.begin(), kSections.end(),
                       [&font](const Section& section) { return section.isThere(font); });
}

void encodeSections(ByteWriter& out, const FontRecord& font) {
    for (const Section& section : kSections) {
        if (!section.isThere(font)) continue;
        out.text(section.tag);
        const std::size_t lengthPlace = out.bytes().size();
        out.u32(0);
        section.encode(out, font);
        out.setWhole(lengthPlace, out.bytes().size() - lengthPlace - 4, 4);
    }
}

void decodeSections(ByteReader& in, FontRecord& font) {
    auto next = kSections.begin();
    while (!in.atEnd()) {
        const auto bytes = in.take(kTagSize);
        const std::string tag(bytes.begin(), bytes.end());
        const auto known = std::find_if(kSections.begin(), kSections.end(),
                                        [&tag](const Section& section) { return section.tag == tag; });
        if (known == kSections.end())
            in.refuse("it has a part \"" + (isPrintable(tag) ? tag : std::string("?")) +
                      "\" that this program does not know and would lose");
        in.check(known >= next, "its parts are out of order");
        next = known + 1;
        ByteReader part = in.part(in.u32());
        known->decode(part, font);
        part.check(part.atEnd() && known->isThere(font), "a part is longer than it should be");
    }
}

}  // namespace dravik::engine
