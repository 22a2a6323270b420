// How sure a reading is: from what the network says and from how the character lies among the samples that
// the font holds, the probability that the reading is right. What belongs to no character of the font, a
// speck or another letter, lies far from all samples and gets little of it.
#pragma once

#include <array>

#include "engine/classifier/DistanceMeasure.h"

namespace dravik::engine {

// Readings with less confidence than this are shown as "?" unless another limit is asked for.
constexpr double kRejectLimit = 0.2;

struct Evidence {
    double likelihood = 0;  // the network's, 0 to 1
    DistanceMeasure::Nearness nearness;
    // The base recogniser's, which knows no font, 0 to 1; a half where it does not know the character.
    double prior = 0.5;
    // How much likelier than a rival the characters beside it make it, as a logarithm (see
    // CharacterContext.h).
    double neighbours = 0;
};

// What the regression is made on: 1, the log odds of the likelihood, how near the character's own samples are
// and how much nearer than others', as logarithms, and the log odds of the prior, which count up to twice
// where there are few samples.
using EvidenceTerms = std::array<double, 7>;
EvidenceTerms evidenceTerms(const Evidence& evidence);

// 0 to 1. A logistic regression on the evidence's logarithms, fitted to rendered print of three fonts but for
// the prior's weight, which was chosen by what was read with one sample of a character and with twelve, and
// measured on three others (docs/engine-quality.md tells how to repeat both).
double confidence(const Evidence& evidence);

}  // namespace dravik::engine
