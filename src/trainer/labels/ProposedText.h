// The text that is proposed for an image, and what the operator makes of it: which of its characters were
// proposed in doubt and neither typed nor accepted since.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "engine/embedded/LabelCandidates.h"
#include "engine/recogniser/TextFormats.h"

namespace dravik::trainer {

// A found character with the label that is proposed for it.
struct ProposedCharacter {
    std::string character;
    double confidence = 0;  // 0 to 1
    std::string doubt;      // why it is to be looked at, in words; "" when it is sure
};

std::vector<ProposedCharacter> propose(std::span<const engine::CharacterCandidates> found,
                                       const engine::TextFormats& format);

class ProposedText {
  public:
    // Nothing is proposed, and a text that stands there counts as typed.
    void clear();
    // Stands in the box from now on. Of the proposal before, characters that are the same and were accepted
    // stay so.
    void setProposal(std::vector<ProposedCharacter> characters);
    // The box holds another text, which the operator has typed, wholly or in part; without blanks around it.
    void setTyped(const std::string& text);
    // The box holds a text that needs no look: the operator's own of another time.
    void setKnown(const std::string& text);

    const std::vector<ProposedCharacter>& characters() const noexcept { return proposal_; }
    std::string proposal() const;
    // What stands in the box.
    const std::vector<std::string>& text() const noexcept { return text_; }

    // It stands in the box as it was proposed, in doubt, and was not accepted.
    bool isDoubtful(std::size_t place) const;
    std::optional<std::size_t> nextDoubt() const;
    void accept(std::size_t place);

  private:
    std::vector<ProposedCharacter> proposal_;
    std::vector<bool> accepted_;
    std::vector<std::string> text_;
    std::vector<std::optional<std::size_t>>
        origins_;  // which proposed character stands at a place of the text
};

}  // namespace dravik::trainer
