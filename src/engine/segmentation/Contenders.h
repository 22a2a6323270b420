// Which of the numbers of characters that several looks saw in an image are worth a thought.
#pragma once

#include <vector>

#include "engine/segmentation/PrintLooks.h"

namespace dravik::engine {

// A number of characters that was seen: its likeliest candidate, and the logarithm of its weight of votes
// against that of the first.
struct Contender {
    Candidate* best = nullptr;
    double odds = 0;
    std::size_t characters = 0;
    bool isJudged = false;  // its characters are the likeliest pieces
};

// The likeliest first, six at most: views weigh as much as they are likely.
std::vector<Contender> contenders(std::vector<Candidate>& candidates);

}  // namespace dravik::engine
