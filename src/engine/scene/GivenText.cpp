#include "engine/scene/GivenText.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>
#include <vector>

#include "engine/recogniser/BaseReader.h"
#include "engine/recogniser/TextAlignment.h"

namespace dravik::engine {
namespace {

float env(const char* n, float d) { const char* v = std::getenv(n); return v ? std::strtof(v, nullptr) : d; }

// By so much, as a logarithm, the text must suit better than one with an error, and such a share of its
// characters must agree with what is seen.
const double kSurer = env("SURER", -3.2f), kSurerFewer = env("SURERF", -0.9f), kLeastAgreement = env("AGREE", 0.5);
const double kLeastOdds = env("MO", -10);
const float kViewOdds = env("VO", 1);

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
        if (i == changed) {
            part.found = view;
        } else {
            part.found.lines.resize(ownLines(scene, i));
        }
        line += static_cast<int>(part.found.lines.size());
    }
    tellOfNeighbours(result);
    return result;
}

struct Candidate {
    Scene scene;
    TextDivision division;
    double odds = 0;
};

std::optional<TextDivision> divided(const Scene& scene, std::span<const std::string> text) {
    std::vector<const Segmentation*> views;
    for (const ScenePart& part : scene.parts) views.push_back(&part.found);
    return divideByText(views, text);
}

}  // namespace

std::optional<Scene> sceneWithText(const Scene& found, std::span<const std::string> text,
                                   const std::stop_token& stop) {
    static const bool debug = std::getenv("DBG");
    std::vector<Candidate> candidates;
    double withError = -1e9;
    const auto add = [&](Scene scene, double odds) {
        std::optional<TextDivision> division = divided(scene, text);
        if (!division) return;
        if (debug) std::fprintf(stderr, "      view %zu: %.2f  err %.2f  agree %.2f odds %.2f\n", scene.characters(), division->likelihood, division->withError, division->agreement, odds);
        withError = std::max(withError, division->withError + odds);
        candidates.push_back({std::move(scene), *std::move(division), odds});
    };
    const std::size_t have = found.characters(), want = text.size();
    if (want < have ? have - want > 2 : want - have > 3 + want / 3) return std::nullopt;
    const double surer = want < have ? kSurerFewer : kSurer;
    add(found, 0);
    if (!candidates.empty() && candidates.front().division.likelihood - withError < surer)
    for (std::size_t i = 0; i < found.parts.size(); ++i)
        for (const OtherView& other : found.parts[i].found.others) {
            if (stop.stop_requested()) return std::nullopt;
            const std::size_t now = have - found.parts[i].found.glyphs.size() + other.characters;
            if (other.odds < kLeastOdds || std::max(now, want) - std::min(now, want) >= std::max(have, want) - std::min(have, want)) continue;
            const Segmentation view = segment(*found.parts[i].picture, other, takeWholeCharacters);
            if (!view.glyphs.empty()) add(withView(found, i, view), kViewOdds * std::min(0.0, other.odds));
        }
    if (candidates.empty()) return std::nullopt;
    const auto value = [](const Candidate& one) { return one.division.likelihood + one.odds; };
    Candidate& best = *std::max_element(candidates.begin(), candidates.end(), [&](const Candidate& a, const Candidate& b) {
        return value(a) < value(b);
    });
    if (debug) std::fprintf(stderr, "DELTA %.2f %.2f\n", value(best) - withError, best.division.agreement);
    if (value(best) - withError < surer || best.division.agreement < kLeastAgreement) return std::nullopt;
    Scene result = std::move(best.scene);
    for (std::size_t i = 0; i < result.parts.size(); ++i) {
        result.parts[i].found.glyphs = std::move(best.division.characters[i]);
        result.parts[i].found.others.clear();
    }
    return result;
}

}  // namespace dravik::engine
