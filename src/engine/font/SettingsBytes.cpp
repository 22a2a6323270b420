#include "engine/font/SettingsBytes.h"

namespace dravik::engine {
namespace {

template <typename Choice>
Choice decodeChoice(ByteReader& in, Choice last) {
    const std::uint64_t value = in.whole(1);
    in.check(value <= static_cast<std::uint64_t>(last), "one of its settings is unknown");
    return static_cast<Choice>(value);
}

}  // namespace

void encodeSettings(ByteWriter& out, const SegmentationSettings& settings) {
    const PrintSettings& print = settings.print;
    out.whole(static_cast<std::uint64_t>(print.polarity), 1);
    out.whole(static_cast<std::uint64_t>(print.kind), 1);
    out.u32(static_cast<std::size_t>(print.smallestHeight));
    out.whole(settings.region ? 1 : 0, 1);
    if (!settings.region) return;
    const RotatedBox& region = *settings.region;
    for (const float value : {region.centreX, region.centreY, region.width, region.height, region.angle})
        out.real(value);
}

SegmentationSettings decodeSettings(ByteReader& in) {
    SegmentationSettings settings;
    settings.print.polarity = decodeChoice(in, Polarity::LightOnDark);
    settings.print.kind = decodeChoice(in, PrintKind::DotMatrix);
    const std::uint32_t smallest = in.u32();
    in.check(smallest <= static_cast<std::uint32_t>(kMostSmallestHeight), "its smallest height is too large");
    settings.print.smallestHeight = static_cast<int>(smallest);
    if (!decodeChoice(in, true)) return settings;
    RotatedBox& region = settings.region.emplace();
    for (float* value : {&region.centreX, &region.centreY, &region.width, &region.height, &region.angle})
        *value = in.real32();
    in.check(isRegion(region), "its region is out of range");
    return settings;
}

}  // namespace dravik::engine
