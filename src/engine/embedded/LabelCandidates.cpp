#include "engine/embedded/LabelCandidates.h"

#include <algorithm>
#include <utility>

#include "base/Text.h"
#include "engine/classifier/Confidence.h"
#include "engine/classifier/Reading.h"

namespace dravik::engine {
namespace {

// What a network that knows nothing of a character says of it.
constexpr double kUndecided = 0.5;
// Characters that neither the base recogniser nor the network takes for possible are compared with the
// samples only in a font where that is quick.
constexpr double kHardlyPossible = 0.003;
constexpr std::int64_t kQuickSamples = 2000;
// How sure a font with so many samples of both characters must be to contradict alone, and of one to overrule
// the base recogniser.
constexpr int kSamplesToJudge = 2;
constexpr double kFontIsSure = 0.97, kFontRulesOut = 0.05, kFontAgrees = 0.9;

double baseLikelihood(const SuggestedCharacter& suggested, const std::string& character) {
    for (const LikelyCharacter& one : suggested.alternatives)
        if (one.character == character) return one.likelihood;
    return 0;
}

class Candidates {
  public:
    Candidates(const Network& network, const ClassStatistics& statistics, const DistanceMeasure& measure)
        : network_(network), measure_(measure), outputs_(network.codes.size()) {
        std::int64_t samples = 0;
        for (const ClassStatistics::Class& one : statistics.classes())
            if (one.count > 0) {
                classes_.push_back({one.code, one.count});
                samples += one.count;
            }
        isQuick_ = samples <= kQuickSamples;
    }

    std::vector<LabelCandidate> of(const SuggestedCharacter& suggested, const SampleInputs& inputs) {
        std::vector<LabelCandidate> result;
        if (!network_.empty()) network_.run(inputs, outputs_);
        double surest = 0;
        for (const auto& [code, samples] : classes_) {
            const std::string character = characterOf(code);
            const bool isRecognised = recognisedPlace(character).has_value();
            const double base = isRecognised ? baseLikelihood(suggested, character) : kUndecided;
            const double output = networkLikelihood(code);
            const bool isPossible = isQuick_ || base >= kHardlyPossible || output >= kHardlyPossible;
            const double sure =
                isPossible ? engine::confidence({output, measure_.nearness(inputs, code), base}) : 0;
            surest = std::max(surest, sure);
            result.push_back({character, sure, samples});
        }
        // What the font has no samples of is as likely as the font's own characters leave room for.
        for (const LikelyCharacter& one : suggested.alternatives) {
            const bool isOfFont = std::any_of(result.begin(), result.end(), [&](const auto& candidate) {
                return candidate.character == one.character;
            });
            if (!isOfFont) result.push_back({one.character, one.likelihood * (1 - surest), 0});
        }
        std::stable_sort(result.begin(), result.end(),
                         [](const auto& a, const auto& b) { return a.confidence > b.confidence; });
        return result;
    }

  private:
    double networkLikelihood(std::int32_t code) const {
        const auto found = std::find(network_.codes.begin(), network_.codes.end(), code);
        return found == network_.codes.end()
                   ? kUndecided
                   : static_cast<double>(outputs_[static_cast<std::size_t>(found - network_.codes.begin())]);
    }

    const Network& network_;
    const DistanceMeasure& measure_;
    std::vector<float> outputs_;
    std::vector<std::pair<std::int32_t, std::int32_t>> classes_;  // code, samples
    bool isQuick_ = true;
};

}  // namespace

double CharacterCandidates::confidence(const std::string& character) const {
    for (const LabelCandidate& one : candidates)
        if (one.character == character) return one.confidence;
    return 0;
}

std::vector<CharacterCandidates> labelCandidates(const Scene& scene, const Network& network,
                                                 const ClassStatistics& statistics,
                                                 const DistanceMeasure& measure,
                                                 const std::stop_token& stop) {
    std::vector<CharacterCandidates> result;
    Candidates candidates(network, statistics, measure);
    for (const ScenePart& part : scene.parts) {
        if (stop.stop_requested()) break;
        const std::vector<SuggestedCharacter> suggested = readWithoutFont(part.found);
        std::vector<std::string> text;
        for (const SuggestedCharacter& one : suggested) text.push_back(one.best().character);
        const std::vector<SampleInputs> inputs = allInputs(part.found, text);
        for (std::size_t i = 0; i < suggested.size() && !stop.stop_requested(); ++i)
            result.push_back(
                {foundCharacter(part.place(suggested[i].place), part.firstLine + suggested[i].line),
                 candidates.of(suggested[i], inputs[i]), suggested[i].noCharacter});
    }
    return result;
}

bool contradicts(const CharacterCandidates& found, const CharacterLikelihood& said) {
    const LabelCandidate& best = found.best();
    if (best.character == said.expected) return false;
    const auto own = std::find_if(found.candidates.begin(), found.candidates.end(),
                                  [&](const auto& one) { return one.character == said.expected; });
    const bool knowsIt = own != found.candidates.end() && own->samples >= kSamplesToJudge;
    if (knowsIt && own->confidence > kFontAgrees) return false;
    if (said.disagrees()) return true;
    return knowsIt && own->confidence < kFontRulesOut && best.samples >= kSamplesToJudge &&
           best.confidence > kFontIsSure;
}

}  // namespace dravik::engine
