// Decisions by likelihood, and how far they were in doubt.
#pragma once

#include <cmath>

namespace dravik::engine {

// Decisions of one kind: pieces cut or left whole, parts joined or left apart, print kept or dropped.
struct Decisions {
    // Expected numbers of wrong ones.
    double wronglyDone = 0, wronglyLeft = 0;

    // Whether it is done.
    bool decide(double odds) {
        const bool done = odds > 0;
        (done ? wronglyDone : wronglyLeft) += 1 / (1 + std::exp(std::abs(odds)));
        return done;
    }
};

// Of the finding of characters in a line.
struct CharacterDecisions {
    Decisions cuts, joins, prints;
};

}  // namespace dravik::engine
