#include "engine/font/FontState.h"

#include <utility>

namespace dravik::engine {

FontState::FontState(const FontRecord& font)
    : characterSet(font.characterSet),
      training(std::make_shared<Training>(font.training)),
      settings(font.settings) {
    samples.restore(font.samples, font.distances, font.nextSerial);
}

void FontState::replace(const FontRecord& font) {
    FontState other(font);
    other.samples.skipSerials(samples.nextSerial());
    *this = std::move(other);
}

FontRecord FontState::record() const {
    FontRecord font;
    font.characterSet = characterSet;
    font.nextSerial = samples.nextSerial();
    const SampleColumnsPtr committed = samples.columns(tool::SampleKind::Committed);
    font.samples.reserve(committed->size());
    for (const Sample* sample : committed->samples) font.samples.push_back(*sample);
    font.distances = committed->distances;
    font.training = *training;
    font.settings = settings;
    return font;
}

}  // namespace dravik::engine
