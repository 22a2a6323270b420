// What the tool makes of an image, to be compared to the last bit.
#pragma once

#include <string>
#include <vector>

#include "engine/embedded/EmbeddedTool.h"

namespace dravik {

struct Seen {
    std::vector<engine::CharacterBox> boxes;
    // Without a font, and with the tool's where it is trained, separated by a blank.
    std::string text;
    std::vector<double> likelihoods;  // of all that a character may be, then how sure the font is

    bool operator==(const Seen&) const = default;
};

inline Seen seenBy(engine::EmbeddedTool& tool, const engine::GreyImage& image) {
    tool.setImage(image);
    Seen seen{tool.characterBoxes(), {}, {}};
    for (const engine::SuggestedCharacter& one : tool.suggest()) {
        seen.text += one.best().character;
        for (const engine::LikelyCharacter& may : one.alternatives)
            seen.likelihoods.push_back(may.likelihood);
    }
    seen.text += ' ';
    if (tool.isTrained())
        for (const engine::ReadCharacter& one : tool.read()) {
            seen.text += one.character;
            seen.likelihoods.push_back(one.confidence);
        }
    return seen;
}

}  // namespace dravik
