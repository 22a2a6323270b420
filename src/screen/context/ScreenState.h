// What the screen itself remembers at one moment of the operator's work: the last include, the message, and
// which buttons may be pressed. Who keeps versions of a font keeps this with each, so that going back and
// forth brings the screen back too.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace dravik::screen {

struct ScreenState {
    std::string m_LastInclude;
    std::string m_IncludedChars;
    std::string message;          // of the panel "Message"
    std::string undoToolTip;      // of the toolbar button "Undo"
    std::string figures;          // cycles and RMS error of the last run
    std::string addedChars;       // which the last include has brought to the font
    std::string markedChars;      // whose cells are marked as included
    std::uint32_t committed = 0;  // samples that are the last include's
    bool undoEnabled = false;
    bool includeEnabled = false;
    bool saveEnabled = false;
    bool revertEnabled = false;
    // A run has ended, and the operator has yet to save or revert it before anything else.
    bool awaitsDecision = false;

    bool operator==(const ScreenState&) const = default;
};

// A few dozen bytes behind the texts: version, texts, switches, checksum.
std::string encode(const ScreenState& state);
// Nothing for bytes that encode() did not make, that were damaged or cut, or that a later version made.
std::optional<ScreenState> decodeScreenState(std::string_view bytes);

}  // namespace dravik::screen
