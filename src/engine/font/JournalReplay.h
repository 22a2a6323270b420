// What a font's journal stands for: the font with the acts that led there. It is made from the journal's
// entries when the font is opened, and turned into entries when a journal begins anew.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "engine/font/ActHistory.h"
#include "engine/font/FontState.h"
#include "engine/font/JournalEntry.h"
#include "tool/FontHistory.h"

namespace dravik::engine {

struct FontWithHistory {
    FontState state;
    ActHistory history;
    FontDigest digest = 0;  // of the font file as it was read or last written
};

struct Replayed {
    FontWithHistory font;
    std::optional<tool::RecoveredChanges> recovered;  // what is not saved, under the name that is given
    std::optional<FontRecord> letGo;                  // with changes that were let go
};
// The history of all entries, and the state of those behind the point that the font file stands for. Nothing
// when they do not fit the font file.
std::optional<Replayed> replayJournal(const JournalContent& content, const FontRecord& fontFile,
                                      FontDigest digest, const std::string& name);

// A journal from which the same font comes back.
std::vector<TimedEntry> journalEntries(const FontWithHistory& font);
// The point at which the font file of that digest holds the font as it is here.
KnownState savedState(const FontWithHistory& font, FontDigest digest);

}  // namespace dravik::engine
