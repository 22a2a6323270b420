#include "engine/classifier/Confidence.h"

#include <algorithm>
#include <cmath>

namespace dravik::engine {
namespace {

constexpr EvidenceTerms kWeights = {2.654, 0.234, -0.241, 0.943, -0.491, -3.054, 0.7};
// Beyond these odds the network says no more than that it is sure.
constexpr double kLeastDoubt = 1e-4;
// What the base recogniser says cannot outweigh samples that are clear.
constexpr double kLeastPrior = 0.05;

}  // namespace

EvidenceTerms evidenceTerms(const Evidence& evidence) {
    const double sure = std::clamp(evidence.likelihood, kLeastDoubt, 1 - kLeastDoubt);
    const double prior = std::clamp(evidence.prior, kLeastPrior, 1 - kLeastPrior);
    const double few = 1 + 1 / static_cast<double>(std::max<std::size_t>(1, evidence.nearness.samples));
    const double own = static_cast<double>(evidence.nearness.own) + 1,
                 other = static_cast<double>(evidence.nearness.other) + 1;
    return {1,
            std::log(sure / (1 - sure)),
            std::log(own),
            std::log(other / own),
            std::max(0.0, std::log(own / 100)),
            std::max(0.0, std::log(own / 300)),
            few * std::log(prior / (1 - prior))};
}

double confidence(const Evidence& evidence) {
    const EvidenceTerms terms = evidenceTerms(evidence);
    double sum = evidence.neighbours;
    for (std::size_t i = 0; i < terms.size(); ++i) sum += kWeights[i] * terms[i];
    return 1 / (1 + std::exp(-sum));
}

}  // namespace dravik::engine
