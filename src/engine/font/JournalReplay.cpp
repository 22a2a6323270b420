#include "engine/font/JournalReplay.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "base/Failure.h"

namespace dravik::engine {
namespace {

std::vector<Sample> uncommittedOf(const FontState& state) {
    std::vector<Sample> result;
    for (const Sample* sample : state.samples.columns(tool::SampleKind::Uncommitted)->samples)
        result.push_back(*sample);
    return result;
}

// The last point of the journal from which the font file of that digest can be gone on from.
std::optional<std::size_t> startIn(const JournalContent& content, FontDigest digest) {
    for (std::size_t i = content.entries.size(); i-- > 0;)
        if (const auto* known = std::get_if<KnownState>(&content.entries[i].entry);
            known && known->digest == digest)
            return i;
    return std::nullopt;
}

FontState stateAt(const KnownState& known, const FontRecord& fontFile) {
    FontState state(known.state ? *known.state : fontFile);
    applyChange(AddUncommitted{known.uncommitted}, state);
    return state;
}

// Makes one entry after the other. What an entry does to the state counts behind the start only.
class Replay {
  public:
    Replay(const FontRecord& fontFile, FontWithHistory& font) : fontFile_(fontFile), font_(font) {}

    // Raises Failure for an entry that does not fit what is there.
    void play(const JournalContent& content, std::size_t start) {
        for (std::size_t i = 0; i < content.entries.size(); ++i) {
            isStart_ = i == start;
            counts_ = i > start;
            when_ = content.entries[i].when;
            const bool isWork =
                std::visit([this](const auto& entry) { return make(entry); }, content.entries[i].entry);
            if (!isWork || !counts_) continue;
            if (!first_) first_ = when_;
            last_ = when_;
        }
    }

    // What of it is not saved.
    tool::RecoveredChanges unsaved(const std::string& name, tool::FontTime atStart) const {
        const ActHistory& history = font_.history;
        // What stands before the start, in a journal that was written anew, is not counted there.
        const std::size_t saved = history.saved().value_or(history.done());
        const std::size_t differing =
            saved > history.done() ? saved - history.done() : history.done() - saved;
        int acts = std::max(acts_, static_cast<int>(differing));
        if (!changesUncommittedOnly(history.open())) ++acts;
        std::optional<tool::FontTime> first = first_;
        tool::FontTime last = last_;
        if (!history.acts().empty() && history.done() > saved &&
            (!first || history.acts()[saved].when < *first))
            first = history.acts()[saved].when;
        if (!first) first = last = atStart;
        return {name, std::max(acts, 1), *first, std::max(last, *first), {}};
    }

  private:
    // True when it is work of the operator.
    bool make(const FontChange& change) {
        if (counts_) applyChange(change, font_.state);
        font_.history.add(change);
        return true;
    }
    bool make(const ActEnded& ended) {
        if (!font_.history.endAct(ended.words, ended.screenState, when_)) return false;
        acts_ += counts_;
        return true;
    }
    bool make(const ActAmended& amended) {
        font_.history.amend(amended.words, amended.screenState);
        return false;
    }
    bool make(const ActUndone&) {
        checkBetweenActs(font_.history.undoable());
        if (counts_) revertAct(*font_.history.undoable(), font_.state);
        font_.history.undo();
        acts_ += counts_;
        return true;
    }
    bool make(const ActRedone&) {
        checkBetweenActs(font_.history.redoable());
        if (counts_) applyAct(*font_.history.redoable(), font_.state);
        font_.history.redo();
        acts_ += counts_;
        return true;
    }
    bool make(const KnownState& known) {
        if (!isStart_) return false;
        font_.state = stateAt(known, fontFile_);
        font_.history.noteSaved(known.saved ? std::optional<std::size_t>(*known.saved) : std::nullopt);
        return false;
    }
    bool make(const LetGo&) const { return true; }

    void checkBetweenActs(const Act* act) const {
        if (!act || !font_.history.open().empty())
            throw Failure(RuntimeError::DeviceIoError, "A step back or forth has no act to go with");
    }

    const FontRecord& fontFile_;
    FontWithHistory& font_;
    bool isStart_ = false;
    bool counts_ = false;
    tool::FontTime when_;  // the entry was made
    int acts_ = 0;
    std::optional<tool::FontTime> first_;
    tool::FontTime last_;
};

}  // namespace

std::optional<Replayed> replayJournal(const JournalContent& content, const FontRecord& fontFile,
                                      FontDigest digest, const std::string& name) {
    const std::optional<std::size_t> start = startIn(content, digest);
    if (!start) return std::nullopt;
    Replayed result{{FontState(fontFile), {}, digest}, std::nullopt, std::nullopt};
    Replay replay(fontFile, result.font);
    try {
        replay.play(content, *start);
    } catch (const Failure&) {
        return std::nullopt;
    }
    if (*start + 1 < content.entries.size() && std::holds_alternative<LetGo>(content.entries.back().entry))
        result.letGo = result.font.state.record();
    else if (result.font.history.isUnsaved())
        result.recovered = replay.unsaved(name, content.entries[*start].when);
    return result;
}

std::vector<TimedEntry> journalEntries(const FontWithHistory& font) {
    const ActHistory& history = font.history;
    std::vector<TimedEntry> all;
    const auto add = [&](const JournalEntry& entry, tool::FontTime when) { all.push_back({entry, when}); };
    const auto time = timeNow();
    if (!history.firstScreenState().empty()) add(ActAmended{{}, history.firstScreenState()}, time);
    for (const Act& act : history.acts()) {
        for (const FontChange& change : act.changes) add(change, act.when);
        add(ActEnded{act.words, act.screenState}, act.when);
    }
    for (std::size_t i = history.done(); i < history.acts().size(); ++i) add(ActUndone{}, time);
    for (const FontChange& change : history.open()) add(change, time);
    KnownState known;
    known.digest = font.digest;
    known.uncommitted = uncommittedOf(font.state);
    if (history.saved()) known.saved = static_cast<std::uint32_t>(*history.saved());
    if (history.isUnsaved()) known.state = std::make_shared<FontRecord>(font.state.record());
    add(known, time);
    return all;
}

KnownState savedState(const FontWithHistory& font, FontDigest digest) {
    return {digest, nullptr, uncommittedOf(font.state), static_cast<std::uint32_t>(font.history.done())};
}

}  // namespace dravik::engine
