// What stands in a font's journal, and how it stands there in bytes: each entry with the time at which it was
// made and a checksum. The layout is described in docs/font-file.md.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include "engine/font/FontChange.h"
#include "tool/FontHistory.h"

namespace dravik::engine {

// Names the content of a font file; 0 names none.
using FontDigest = std::uint64_t;
FontDigest digestOf(std::span<const std::uint8_t> fontFile);

struct ActEnded {
    std::string words;
    std::string screenState;
};
struct ActAmended {
    std::string words;
    std::string screenState;
};
struct ActUndone {};
struct ActRedone {};
// A point at which the state is known: it is that in the font file of this digest, or for who finds that file
// the state given here; with these uncommitted samples.
struct KnownState {
    FontDigest digest = 0;
    std::shared_ptr<const FontRecord> state;  // null: the font file's
    std::vector<Sample> uncommitted;
    std::optional<std::uint32_t> saved;  // acts that were done when the font file was written
};
// The changes were let go: they are not to be made again.
struct LetGo {};

using JournalEntry = std::variant<FontChange, ActEnded, ActAmended, ActUndone, ActRedone, KnownState, LetGo>;

struct TimedEntry {
    JournalEntry entry;
    tool::FontTime when;  // to the millisecond
};
tool::FontTime timeNow();

// What a journal begins with.
std::vector<std::uint8_t> journalHead();
std::vector<std::uint8_t> encodeEntry(const TimedEntry& entry);

struct JournalContent {
    std::vector<TimedEntry> entries;
    std::size_t used = 0;    // bytes up to the end of the last whole entry; 0 when it is no journal
    bool isLater = false;    // it was written by a later version of the program
    bool isEarlier = false;  // by an earlier one: what is added to it now, that one would not understand
};
// The whole entries before the first that is cut off or damaged. Raises nothing but what memory raises.
JournalContent readJournal(std::span<const std::uint8_t> bytes);

}  // namespace dravik::engine
