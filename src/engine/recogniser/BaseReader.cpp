#include "engine/recogniser/BaseReader.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include "engine/classifier/OtherSize.h"
#include "engine/recogniser/CharacterContext.h"

namespace dravik::engine {
namespace {

constexpr double kWorthNaming = 0.01;
constexpr std::size_t kMostAlternatives = 6;
// An expected character of less likelihood is a mistake where another has more than the second.
constexpr double kHardlyExpected = 0.02, kClearlyOther = 0.8;
// A character counts for a view by how much likelier it is a whole one than this, at most as much as the second
// says; measured on generated part images.
constexpr double kUsuallyWhole = 0.5, kLeastWhole = 0.02, kViewWeight = 0.6;
constexpr std::size_t kMostDifferent = 2;

using Likelihoods = std::vector<PatchLikelihoods>;

std::vector<CharacterPatch> patchesOf(const Segmentation& found, std::size_t from, std::size_t to, const LineMetrics& line) {
    std::vector<CharacterPatch> patches;
    for (std::size_t i = from; i < to; ++i)
        patches.push_back(characterPatch(found.ink, found.frame, found.glyphs[i].piece, line));
    return patches;
}

// How likely the characters of a line are to be any, as a logarithm.
double trust(const Likelihoods& line) {
    double sum = 0;
    for (const PatchLikelihoods& one : line)
        sum += std::max(std::log(kLeastWhole), static_cast<double>(*std::max_element(one.begin(), one.end() - 1)));
    return sum;
}

// Of all found characters, each line in the size that suits it.
Likelihoods likelihoodsOf(const Segmentation& found) {
    Likelihoods result;
    for (std::size_t from = 0; from < found.glyphs.size();) {
        std::size_t to = from;
        while (to < found.glyphs.size() && found.glyphs[to].line == found.glyphs[from].line) ++to;
        LineMetrics line = found.lines[static_cast<std::size_t>(found.glyphs[from].line)];
        Likelihoods best = patchLikelihoods(patchesOf(found, from, to, line));
        if (const std::optional<OtherSize> other = otherSize(found.lines, line)) {
            line.capHeight = other->capHeight;
            Likelihoods smaller = patchLikelihoods(patchesOf(found, from, to, line));
            if (trust(smaller) - other->doubt > trust(best)) best = std::move(smaller);
        }
        result.insert(result.end(), best.begin(), best.end());
        from = to;
    }
    return result;
}

std::vector<SuggestedCharacter> suggested(const Segmentation& found, const Likelihoods& likelihoods, Context context) {
    std::vector<SuggestedCharacter> result;
    for (std::size_t from = 0; from < found.glyphs.size();) {
        std::size_t to = from;
        while (to < found.glyphs.size() && found.glyphs[to].line == found.glyphs[from].line) ++to;
        const auto line = std::span(likelihoods).subspan(from, to - from);
        const std::vector<std::size_t> best = context == Context::Used ? likeliestTogether(line) : likeliestAlone(line);
        for (std::size_t i = from; i < to; ++i) {
            SuggestedCharacter& one = result.emplace_back();
            one.place = found.place(found.glyphs[i]);
            one.line = found.glyphs[i].line;
            const PatchLikelihoods& of = likelihoods[i];
            one.noCharacter = std::exp(static_cast<double>(of[kNoCharacter]));
            std::array<std::size_t, kNoCharacter> order;
            std::iota(order.begin(), order.end(), std::size_t{0});
            std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return of[a] > of[b]; });
            const auto add = [&](std::size_t place) {
                one.alternatives.push_back({std::string(1, kRecognisedCharacters[place]), std::exp(static_cast<double>(of[place]))});
            };
            add(best[i - from]);
            for (const std::size_t place : order) {
                if (std::exp(static_cast<double>(of[place])) < kWorthNaming || one.alternatives.size() >= kMostAlternatives) break;
                if (place != best[i - from]) add(place);
            }
        }
        from = to;
    }
    return result;
}

// How much likelier than usual the characters of a view are whole ones, as a logarithm.
double wholeness(const Likelihoods& likelihoods) {
    double sum = 0;
    for (const PatchLikelihoods& one : likelihoods) {
        const double most = std::exp(static_cast<double>(*std::max_element(one.begin(), one.end() - 1)));
        sum += std::log(std::max(kLeastWhole, most) / kUsuallyWhole);
    }
    return kViewWeight * sum;
}

}  // namespace

bool CharacterLikelihood::disagrees() const {
    return isKnown && likelihood < kHardlyExpected && likeliest.likelihood > kClearlyOther;
}

std::vector<SuggestedCharacter> readWithoutFont(const Segmentation& found, Context context) {
    return suggested(found, likelihoodsOf(found), context);
}

std::vector<SuggestedCharacter> readWithoutFont(const GreyImage& image, const Segmentation& found, Context context) {
    Likelihoods best = likelihoodsOf(found);
    double most = wholeness(best);
    std::optional<Segmentation> taken;
    const std::size_t characters = found.glyphs.size();
    for (const OtherView& view : found.others) {
        if (view.characters + kMostDifferent < characters || characters + kMostDifferent < view.characters) continue;
        Segmentation other = segment(image, view);
        Likelihoods likelihoods = likelihoodsOf(other);
        if (const double value = view.odds + wholeness(likelihoods); value > most) {
            most = value;
            best = std::move(likelihoods);
            taken = std::move(other);
        }
    }
    return suggested(taken ? *taken : found, best, context);
}

std::vector<CharacterLikelihood> compareWithText(const Segmentation& found, std::span<const std::string> text) {
    if (text.size() != found.glyphs.size()) return {};
    std::vector<CharacterLikelihood> result;
    const Likelihoods likelihoods = likelihoodsOf(found);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const PatchLikelihoods& of = likelihoods[i];
        CharacterLikelihood& one = result.emplace_back();
        one.expected = text[i];
        const std::size_t best = static_cast<std::size_t>(std::max_element(of.begin(), of.end() - 1) - of.begin());
        one.likeliest = {std::string(1, kRecognisedCharacters[best]), std::exp(static_cast<double>(of[best]))};
        if (const std::optional<std::size_t> place = recognisedPlace(text[i])) {
            one.isKnown = true;
            one.likelihood = std::exp(static_cast<double>(of[*place]));
        }
    }
    return result;
}

}  // namespace dravik::engine
