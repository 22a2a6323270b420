#include "engine/scene/GivenText.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "engine/recogniser/BaseReader.h"
#include "engine/recogniser/TextAlignment.h"

namespace dravik::engine {
namespace {

// The following numbers were judged by `dravik_evaluate include` on develop and develop2.
// By so much, as a logarithm, the text may suit worse than one with an error: where it has more characters
// than were found, and where it has fewer.
constexpr double kSureMore = -2.9, kSureFewer = -1.25;
// Such a share of the characters must agree with what is seen.
constexpr double kLeastAgreement = 0.5;
// A text that differs more from what is found is another one: so many characters fewer, so many more and such
// a part of its own.
constexpr std::size_t kMostFewer = 2, kMostMore = 3, kMorePart = 3;
// Other views that are less likely, as a logarithm, are not tried.
constexpr double kLeastOdds = -10;

// How many lines of the part are its own.
std::size_t ownLines(const Scene& scene, std::size_t part) {
    if (part + 1 < scene.parts.size())
        return static_cast<std::size_t>(scene.parts[part + 1].firstLine - scene.parts[part].firstLine);
    const Segmentation& found = scene.parts[part].found;
    return found.glyphs.empty() ? found.lines.size() : static_cast<std::size_t>(found.glyphs.back().line) + 1;
}

// The scene with another view of one of its parts.
Scene withView(const Scene& scene, std::size_t changed, const Segmentation& view) {
    Scene result = scene;
    int line = 0;
    for (std::size_t i = 0; i < result.parts.size(); ++i) {
        ScenePart& part = result.parts[i];
        part.firstLine = line;
        if (i == changed)
            part.found = view;
        else
            part.found.lines.resize(ownLines(scene, i));
        line += static_cast<int>(part.found.lines.size());
    }
    tellOfNeighbours(result);
    return result;
}

struct Candidate {
    Scene scene;
    TextDivision division;
    double value = 0;
};

std::size_t apart(std::size_t a, std::size_t b) {
    return std::max(a, b) - std::min(a, b);
}

std::optional<TextDivision> divided(const Scene& scene, std::span<const std::string> text) {
    std::vector<const Segmentation*> views;
    for (const ScenePart& part : scene.parts) views.push_back(&part.found);
    return divideByText(views, text);
}

}  // namespace

std::optional<Scene> sceneWithText(const Scene& found, std::span<const std::string> text,
                                   const std::stop_token& stop) {
    const std::size_t have = found.characters(), want = text.size();
    if (want + kMostFewer < have || want > have + kMostMore + want / kMorePart) return std::nullopt;
    const double sure = want < have ? kSureFewer : kSureMore;
    std::optional<Candidate> best;
    double withError = -1e9;
    const auto isSure = [&] { return best && best->value - withError > sure; };
    const auto add = [&](const Scene& scene, double odds) {
        std::optional<TextDivision> division = divided(scene, text);
        if (!division) return;
        withError = std::max(withError, division->withError + odds);
        const double value = division->likelihood + odds;
        if (!best || value > best->value) best = {scene, *std::move(division), value};
    };
    add(found, 0);
    for (std::size_t i = 0; i < found.parts.size() && !isSure(); ++i)
        for (const OtherView& other : found.parts[i].found.others) {
            if (stop.stop_requested()) return std::nullopt;
            const std::size_t now = have - found.parts[i].found.glyphs.size() + other.characters;
            if (other.odds < kLeastOdds || apart(now, want) >= apart(have, want)) continue;
            const Segmentation view = segment(*found.parts[i].picture, other, takeWholeCharacters);
            if (!view.glyphs.empty()) add(withView(found, i, view), std::min(0.0, other.odds));
        }
    if (!isSure() || best->division.agreement < kLeastAgreement) return std::nullopt;
    for (std::size_t i = 0; i < best->scene.parts.size(); ++i) {
        Segmentation& part = best->scene.parts[i].found;
        part.glyphs = std::move(best->division.characters[i]);
        part.others.clear();
    }
    return std::move(best->scene);
}

}  // namespace dravik::engine
