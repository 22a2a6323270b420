// An act of the operator that changed the font, told to whoever keeps a history or says in words what
// happened: all that one click, key or menu pick did, as one.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "screen/context/ScreenState.h"

namespace dravik::screen {

struct OperatorAct {
    enum class Kind : std::uint8_t {
        Include,
        UndoOfInclude,        // the screen's own Undo
        DeletionInGrid,       // the selected rows
        DeletionOfBin,        // a bin of a character's histogram
        DeletionByDistance,   // by a host, through the public interface
        DeletionOfCharacter,  // "Delete Training"
        Exclusion,            // "Remove ... from Font": the character's samples and the character
        CharacterSet,
        Learn,
        Revert,
        Save,
    };

    Kind kind{};
    // The character of each sample that was included or deleted, in that order; of CharacterSet the new set.
    std::vector<std::string> characters;
    // What the act was about where no sample tells it: the excluded character, the font saved or reverted.
    std::string subject;
    ScreenState before;
    ScreenState after;

    bool deletes() const noexcept;
    std::size_t samples() const noexcept { return kind == Kind::CharacterSet ? 0 : characters.size(); }
};

// "deletion of 3 samples of B", as it stands behind "Undo ".
std::string actName(const OperatorAct& act);
// "Deleted f, E, s", "Undone: include of AB"; "" for an act that deleted no sample. Of many deleted the first
// ten and how many more.
std::string deletedText(const OperatorAct& act);

}  // namespace dravik::screen
