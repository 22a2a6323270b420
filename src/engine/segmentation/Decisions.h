// Decisions by likelihood: how willingly they are made, and how far they were in doubt.
#pragma once

#include <algorithm>
#include <cmath>

namespace dravik::engine {

// Decisions of one kind: pieces cut or left whole, parts joined or left apart, print kept or dropped.
struct Decisions {
    // Log odds from which on it is done.
    float bar = 0;
    // Expected numbers of wrong ones.
    double wronglyDone = 0, wronglyLeft = 0;
    // The log odds of the least likely that was done and of the likeliest that was not.
    double leastDone = 1e9, mostLeft = -1e9;

    // Whether it is done.
    bool decide(double odds) {
        const bool done = odds > static_cast<double>(bar);
        if (done) {
            wronglyDone += 1 / (1 + std::exp(odds));
            leastDone = std::min(leastDone, odds);
        } else {
            wronglyLeft += 1 / (1 + std::exp(-odds));
            mostLeft = std::max(mostLeft, odds);
        }
        return done;
    }
};

// Of the finding of characters in a line.
struct CharacterDecisions {
    Decisions cuts, joins, prints;
};

}  // namespace dravik::engine
