// A check of a font on samples that it was not trained on: the samples are dealt into folds, and each fold is
// read by a network trained on the others. So the operator learns what the font would read wrong before it
// runs a line.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "engine/embedded/BackgroundRun.h"
#include "engine/font/SampleStore.h"

namespace dravik::engine {

// Samples of one character that were read as another.
struct Confusion {
    std::int32_t code = 0;
    std::int32_t readAs = 0;
    int count = 0;
};

// A sample that was read as another character.
struct MisreadSample {
    std::uint64_t serial = 0;
    std::int32_t code = 0;
    std::int32_t readAs = 0;
};

struct HeldOutResult {
    int folds = 0;
    int checked = 0;  // samples
    int wrong = 0;
    std::vector<std::int32_t> unchecked;  // characters of a single sample, which nothing can be learnt for
    std::vector<Confusion> confusions;    // the most frequent first; equal ones in order of their codes
    std::vector<MisreadSample> misread;   // in the order of the confusions
};

// Of the network that a font is given and of those of its check.
constexpr std::uint32_t kTrainingSeed = 20011;

// Deals every character's samples, in the order in which they came, into up to 5 folds, so that samples of
// one image stay together as far as possible. Of a font of more than 5,000 samples as many are taken, evenly
// from each character. Nothing when `more` said no, which is asked every few milliseconds, or when there are
// no two characters of two samples. The same samples and seed give the same result.
std::optional<HeldOutResult> checkHeldOut(const SampleColumns& samples, std::uint32_t seed,
                                          const std::function<bool()>& more);

// "Q, 7, W": characters by name, of many the first dozen and how many more.
std::string listed(const std::vector<std::int32_t>& codes);

// The result in one line, with the three most frequent confusions: "Held-out check (5-fold): 98.7 % right, 16
// of 1240 wrong: 0 read as O 5 times, l read as 1 3 times, S read as 5 once; a single sample each of Q, 7".
std::string heldOutText(const HeldOutResult& result);

// A check in the background. There is no result when there was nothing to check, and for want of memory: the
// font itself is none the worse.
class HeldOutWorker : private BackgroundRun<HeldOutResult> {
  public:
    // Ends a check that is going on.
    void start(SampleColumnsPtr samples, std::uint32_t seed);
    using BackgroundRun::result;
    using BackgroundRun::running;
    using BackgroundRun::stop;
};

}  // namespace dravik::engine
