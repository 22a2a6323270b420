#include "RenderedFonts.h"

#include <map>

#include "engine/segmentation/Features.h"

namespace dravik {

using namespace engine;

TrainingSet trainingSet(const LabelledInputs& data) {
    TrainingSet set;
    std::map<std::int32_t, std::uint32_t> places;
    for (const std::int32_t code : data.codes) places.emplace(code, 0u);
    for (auto& [code, place] : places) {
        place = static_cast<std::uint32_t>(set.codes.size());
        set.codes.push_back(code);
    }
    for (std::size_t i = 0; i < data.size(); ++i) {
        set.inputs.insert(set.inputs.end(), data.inputs[i].begin(), data.inputs[i].end());
        set.classes.push_back(places[data.codes[i]]);
    }
    return set;
}

void addRendered(LabelledInputs& to, const std::string& fontFile, Tier tier, int images, unsigned seed) {
    std::mt19937 random(seed);
    for (int image = 0; image < images; ++image) {
        std::string text = kOverviewCharacters;
        for (std::size_t i = text.size(); i > 1; --i) std::swap(text[i - 1], text[random() % i]);
        for (const std::string& part : {text.substr(0, 37), text.substr(37)}) {
            const RenderedLine line = renderedLine(fontFile, part, tier, random);
            for (std::size_t i = 0; i < line.text.size(); ++i)
                to.add(glyphInputs(line.found, line.found.glyphs[i], line.found.lines[0]), line.text[i]);
        }
    }
}

}  // namespace dravik
