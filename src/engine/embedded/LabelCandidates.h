// What each found character of an image may be, for a label to be proposed: what the base recogniser says and
// what the font's samples and its network say, as far as there are any. Every found character has its
// candidates, so that a label goes with a box.
#pragma once

#include <functional>
#include <stop_token>
#include <string>
#include <vector>

#include "engine/classifier/DistanceMeasure.h"
#include "engine/classifier/Network.h"
#include "engine/font/FontReader.h"
#include "engine/recogniser/BaseReader.h"
#include "engine/scene/Scene.h"

namespace dravik::engine {

struct LabelCandidate {
    std::string character;
    double confidence = 0;  // that it is this one, 0 to 1
    int samples = 0;        // of it in the font
};

struct CharacterCandidates {
    FoundCharacter place;
    // The likeliest first, at least one: all characters of the font, and what the base recogniser names.
    std::vector<LabelCandidate> candidates;
    double noCharacter = 0;  // how likely it is a half, a double or dirt, 0 to 1

    const LabelCandidate& best() const { return candidates.front(); }
    // Of that character; 0 where it is no candidate.
    double confidence(const std::string& character) const;
};

// Of the found characters in their order. `network` may be empty, and so may the samples that `statistics`
// counts and `measure` compares with. Ends early, with what it likes, once a stop is requested.
std::vector<CharacterCandidates> labelCandidates(const Scene& scene, const Network& network,
                                                 const ClassStatistics& statistics,
                                                 const DistanceMeasure& measure,
                                                 const std::stop_token& stop = {});

// Whether the character that was found is so clearly another one than it is said to be that a mistake is
// likely: by the base recogniser, and by the font where it has samples of both.
bool contradicts(const CharacterCandidates& found, const CharacterLikelihood& said);

}  // namespace dravik::engine
