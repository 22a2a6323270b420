#include "engine/classifier/Reading.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string_view>
#include <utility>

#include "base/Text.h"
#include "engine/recogniser/BaseNetwork.h"
#include "engine/segmentation/OtherSize.h"

namespace dravik::engine {
namespace {

// The least confidence that one character contributes to its line: a single bad one must not decide.
constexpr double kLeastTrust = 0.01;
// Characters to which both the network and the base recogniser give no higher probability are not compared
// with the samples.
constexpr float kWorthComparing = 0.003f;
constexpr double kWorthComparingPrior = 0.5;
constexpr std::string_view kSmallOnes = "acegmnopqrsuvwxyz";
constexpr std::string_view kMarks = "-=.,:;\"'_*+";

struct LineReading {
    std::vector<Recognition> characters;
    double trust = 0;  // sum of the logarithms of the confidences
};

// What the base recogniser says of a character that it may not know.
double priorOf(const PatchLikelihoods& base, std::int32_t code) {
    const std::optional<std::size_t> place = recognisedPlace(characterOf(code));
    return place ? std::exp(static_cast<double>(base[*place])) : 0.5;
}

// Of the characters that the network or the base recogniser takes for possible, the one that all make surest.
Recognition surest(const ReadingMeans& means, const SampleInputs& inputs, std::span<const float> outputs,
                   const PatchLikelihoods& base) {
    Recognition result;
    double most = -1;
    const float likeliest = *std::max_element(outputs.begin(), outputs.end());
    for (std::size_t i = 0; i < outputs.size(); ++i) {
        const std::int32_t code = means.network.codes[i];
        const double prior = priorOf(base, code);
        if (outputs[i] < std::min(likeliest, kWorthComparing) && prior <= kWorthComparingPrior) continue;
        const Evidence evidence{static_cast<double>(outputs[i]), means.measure.nearness(inputs, code), prior};
        CharacterEvidence candidate{code, evidence};
        const bool first = most < 0;
        if (const double sure = confidence(evidence); sure > most) {
            most = sure;
            std::swap(result.best, candidate);
        }
        if (!first) result.others.push_back(candidate);
    }
    return result;
}

// How much neighbours count against a font's evidence. A font may lack samples of a character's very shape
// and have those of a look-alike, as where wrong samples were deleted and some good ones with them: such a
// font reads 14 characters of the tests' lines wrong with a weight of 1, and 8 with 1.4; fonts of 12 sheets
// read 106 and 107 of `develop` wrong.
constexpr double kNeighbourWeight = 1.4;

using PossibleLine = std::vector<std::vector<PossibleCharacter>>;

// The possible characters of a line, its best ones first.
PossibleLine possibleLine(std::span<const Recognition> line) {
    PossibleLine possible;
    possible.reserve(line.size());
    for (const Recognition& one : line) {
        std::vector<PossibleCharacter>& all = possible.emplace_back();
        const auto add = [&](const CharacterEvidence& of) {
            all.push_back(
                {of.code, static_cast<float>(std::log(confidence(of.evidence)) / kNeighbourWeight)});
        };
        add(one.best);
        for (const CharacterEvidence& other : one.others) add(other);
    }
    return possible;
}

// The likeliest together; where these make a text of a format that the print is known to have, the format
// says more of each character than its neighbours do.
std::vector<ChosenCharacter> likeliestInFormat(const PossibleLine& possible, const TextFormats& formats) {
    std::vector<ChosenCharacter> chosen = likeliestTogether(std::span(possible));
    std::vector<std::string> text;
    text.reserve(chosen.size());
    for (std::size_t i = 0; i < chosen.size(); ++i)
        text.push_back(characterOf(possible[i][chosen[i].place].code));
    if (!formats.fit(text)) return chosen;
    for (std::size_t i = 0; i < chosen.size(); ++i) {
        std::vector<float> ofFormat;
        for (const PossibleCharacter& one : possible[i])
            ofFormat.push_back(
                static_cast<float>(std::log(formats.kindWeight(text.size(), i, characterOf(one.code)))));
        const auto value = [&](std::size_t place) { return possible[i][place].likelihood + ofFormat[place]; };
        ChosenCharacter& one = chosen[i] = {};
        for (std::size_t place = 1; place < possible[i].size(); ++place)
            if (value(place) > value(one.place)) one.place = place;
        one.neighbours = ofFormat[one.place] - ofFormat[0];
    }
    return chosen;
}

// Takes the characters that are the likeliest together.
void decideTogether(std::span<Recognition> line, const TextFormats* formats) {
    const PossibleLine possible = possibleLine(line);
    const std::vector<ChosenCharacter> chosen =
        formats ? likeliestInFormat(possible, *formats) : likeliestTogether(std::span(possible));
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (chosen[i].place == 0) continue;
        Recognition& one = line[i];
        std::swap(one.best, one.others[chosen[i].place - 1]);
        const double neighbours = static_cast<double>(chosen[i].neighbours);
        one.best.evidence.neighbours += neighbours;
        one.others[chosen[i].place - 1].evidence.neighbours -= neighbours;
    }
}

}  // namespace

std::vector<SampleInputs> allInputs(const Segmentation& found, std::span<const std::string> text) {
    std::vector<LineMetrics> lines = found.lines;
    if (text.size() == found.glyphs.size()) {
        std::vector<bool> small(lines.size(), false), other(lines.size(), false);
        for (std::size_t i = 0; i < text.size(); ++i) {
            const std::size_t line = static_cast<std::size_t>(found.glyphs[i].line);
            if (text[i].size() == 1 && kSmallOnes.find(text[i].front()) != std::string_view::npos)
                small[line] = true;
            else if (text[i].size() != 1 || kMarks.find(text[i].front()) == std::string_view::npos)
                other[line] = true;
        }
        for (std::size_t line = 0; line < lines.size(); ++line)
            if (lines[line].oneHeight && small[line] && !other[line])
                lines[line].capHeight = otherSize(found.lines, lines[line])->capHeight;
    }
    std::vector<SampleInputs> inputs;
    inputs.reserve(found.glyphs.size());
    for (const Glyph& glyph : found.glyphs)
        inputs.push_back(glyphInputs(found, glyph, lines[static_cast<std::size_t>(glyph.line)]));
    return inputs;
}

std::vector<Recognition> recognize(const Segmentation& found, const ReadingMeans& means,
                                   const std::stop_token& stop) {
    std::vector<Recognition> result;
    const Network& network = means.network;
    if (network.empty()) return result;
    std::vector<float> outputs(network.codes.size());
    const auto readAs = [&](std::size_t from, std::size_t to, const LineMetrics& line) {
        LineReading reading;
        const std::vector<PatchLikelihoods> base = lineLikelihoods(found, from, to, line);
        for (std::size_t i = from; i < to && !stop.stop_requested(); ++i) {
            const SampleInputs inputs = glyphInputs(found, found.glyphs[i], line);
            network.run(inputs, outputs);
            reading.characters.push_back(surest(means, inputs, outputs, base[i - from]));
            reading.trust +=
                std::log(std::max(kLeastTrust, confidence(reading.characters.back().best.evidence)));
        }
        return reading;
    };
    for (std::size_t from = 0; from < found.glyphs.size();) {
        std::size_t to = from;
        while (to < found.glyphs.size() && found.glyphs[to].line == found.glyphs[from].line) ++to;
        LineMetrics line = found.lines[static_cast<std::size_t>(found.glyphs[from].line)];
        LineReading best = readAs(from, to, line);
        if (const std::optional<OtherSize> other = otherSize(found.lines, line)) {
            line.capHeight = other->capHeight;
            LineReading reading = readAs(from, to, line);
            if (reading.trust - other->doubt > best.trust) best = std::move(reading);
        }
        if (means.context == Context::Used) decideTogether(best.characters, means.formats);
        result.insert(result.end(), best.characters.begin(), best.characters.end());
        from = to;
    }
    return result;
}

std::vector<PlacedRecognition> readImage(const Segmentation& found, const ReadingMeans& means,
                                         const std::stop_token& stop) {
    std::vector<PlacedRecognition> result;
    const std::vector<Recognition> read = recognize(found, means, stop);
    for (std::size_t i = 0; i < read.size(); ++i)
        result.push_back({found.place(found.glyphs[i]), found.glyphs[i].line, read[i]});
    return result;
}

}  // namespace dravik::engine
