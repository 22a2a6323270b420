#include "engine/classifier/SceneReading.h"

#include <algorithm>
#include <utility>

namespace dravik::engine {
namespace {

// What `read` makes of each part, with places and lines of the whole.
template <typename Character, typename Read>
std::vector<Character> throughout(const Scene& scene, Read read) {
    std::vector<Character> result;
    int firstLine = 0;
    for (const ScenePart& part : scene.parts) {
        int nextLine = firstLine;
        for (Character& one : read(part)) {
            one.place = part.place(one.place);
            // A line may be seen as two when it is read.
            one.line += firstLine;
            nextLine = std::max(nextLine, one.line + 1);
            result.push_back(std::move(one));
        }
        firstLine = nextLine;
    }
    return result;
}

}  // namespace

std::vector<PlacedGlyph> allPlaces(const Scene& scene) {
    std::vector<PlacedGlyph> result;
    result.reserve(scene.characters());
    for (const ScenePart& part : scene.parts)
        for (const Glyph& glyph : part.found.glyphs)
            result.push_back({part.place(part.found.place(glyph)), part.firstLine + glyph.line});
    return result;
}

std::vector<SampleInputs> allInputs(const Scene& scene, std::span<const std::string> text) {
    const std::size_t characters = scene.characters();
    if (text.size() != characters) text = {};
    std::vector<SampleInputs> result;
    result.reserve(characters);
    for (const ScenePart& part : scene.parts) {
        const std::size_t count = text.empty() ? 0 : part.found.glyphs.size();
        const std::vector<SampleInputs> inputs = allInputs(part.found, text.first(count));
        result.insert(result.end(), inputs.begin(), inputs.end());
        text = text.subspan(count);
    }
    return result;
}

std::vector<PlacedRecognition> readScene(const Scene& scene, const ReadingMeans& means,
                                         const std::stop_token& stop) {
    return throughout<PlacedRecognition>(
        scene, [&](const ScenePart& part) { return readImage(part.found, means, stop); });
}

std::vector<SuggestedCharacter> readWithoutFont(const Scene& scene) {
    return throughout<SuggestedCharacter>(scene,
                                          [](const ScenePart& part) { return readWithoutFont(part.found); });
}

std::vector<CharacterLikelihood> compareWithText(const Scene& scene, std::span<const std::string> text) {
    std::vector<CharacterLikelihood> result;
    if (text.size() != scene.characters()) return result;
    for (const ScenePart& part : scene.parts) {
        const std::size_t count = part.found.glyphs.size();
        for (CharacterLikelihood& one : compareWithText(part.found, text.first(count)))
            result.push_back(std::move(one));
        text = text.subspan(count);
    }
    return result;
}

}  // namespace dravik::engine
