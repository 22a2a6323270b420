#include "engine/font/WorkingCopy.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "base/AtomicFile.h"
#include "base/Failure.h"
#include "base/FileSystem.h"
#include "engine/font/FontVersions.h"

namespace dravik::engine {
namespace {

constexpr char kNothingToUndo[] = "There is nothing to undo";
constexpr char kNothingToRedo[] = "There is nothing to redo";

// Bytes of a journal in which there can be no change yet.
constexpr std::uint64_t kJustBegun = 128;
// No journal is as large.
constexpr std::uint64_t kSomebodyElses = ~0ull;

std::string lockOf(const std::string& fontFile) {
    return linkedFile(fontFile) + ".lock";
}

FileLock taken(const std::string& fontFile, const std::string& name) {
    const std::string file = lockOf(fontFile);
    if (auto lock = FileLock::take(file)) return std::move(*lock);
    throw Failure(RuntimeError::PermissionDenied, "Font \"" + name + "\" is being changed by " +
                                                      FileLock::holder(file) + "; nothing was changed here");
}

tool::FontTime now() {
    return std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
}

FontDigest digestOnDisk(const std::string& file) {
    return fileExists(file) ? digestOf(readFontBytes(file)) : 0;
}

std::vector<Sample> uncommittedOf(const FontState& state) {
    std::vector<Sample> result;
    for (const Sample* sample : state.samples.columns(tool::SampleKind::Uncommitted)->samples)
        result.push_back(*sample);
    return result;
}

bool removesUncommitted(const FontChange& change) {
    const auto* removal = std::get_if<RemoveSample>(&change);
    return removal && removal->kind == tool::SampleKind::Uncommitted;
}

// The last point of the journal from which the font file of that digest can be gone on from.
std::optional<std::size_t> startIn(const JournalContent& content, FontDigest digest) {
    for (std::size_t i = content.entries.size(); i-- > 0;)
        if (const auto* known = std::get_if<KnownState>(&content.entries[i].entry);
            known && known->digest == digest)
            return i;
    return std::nullopt;
}

void takeBack(const Act& act, FontState& state) {
    for (auto change = act.changes.rbegin(); change != act.changes.rend(); ++change)
        revertChange(*change, state);
}

void doAgain(const Act& act, FontState& state) {
    for (const FontChange& change : act.changes) applyChange(change, state);
}

}  // namespace

WorkingCopy::WorkingCopy(std::string name, std::string file, JournalFlusher& flusher)
    : name_(std::move(name)), file_(std::move(file)), flusher_(&flusher), journal_(file_, flusher) {
    open();
}

WorkingCopy::~WorkingCopy() {
    try {
        release();
    } catch (...) {
        return;  // what was written before is in the journal
    }
}

// A journal with unsaved changes is read once more after its lock was taken: whoever held that may have saved
// them meanwhile.
void WorkingCopy::open() {
    for (;;) {
        const std::vector<std::uint8_t> bytes = readFontBytes(file_);
        const auto font = std::make_shared<const FontRecord>(decodeFont(bytes, file_));
        digest_ = digestOf(bytes);
        state_ = FontState(*font);
        history_ = {};
        found_ = {};
        journalSize_ = journal_.sizeOnDisk();
        JournalContent content;
        try {
            content = journal_.read();
        } catch (const Failure& failure) {
            unreadable_ = found_.problem = failure.description();
            lock_.reset();
            return;
        }
        // One that an earlier program has written is written anew with the first change.
        journalUsed_ = content.isEarlier ? 0 : content.used;
        const bool isJustBegun = content.entries.empty() && !content.isLater && journalSize_ <= kJustBegun;
        if (journalSize_ == 0 || isJustBegun) {
            lock_.reset();
            journalUsed_ = 0;
            return;
        }
        const bool fits = replay(content, font);
        // Half an include of a program that died is to be taken out of it, too.
        if (fits && !history_.isUnsaved() && !found_.letGo && history_.open().empty()) {
            lock_.reset();
            return;
        }
        if (lock_) {
            if (!fits || found_.letGo) {
                state_ = FontState(*font);
                history_ = {};
                found_.isForeign = !fits;
                found_.recovered.reset();
                return;
            }
            if (content.isEarlier)
                isJournalBroken_ = true;
            else
                journal_.open(journalUsed_);
            removeUncommitted();
            if (!history_.open().empty()) endAct({}, {});
            wasChanged_ = false;
            rest();
            return;
        }
        std::string problem;
        try {
            lock_ = FileLock::take(lockOf(file_));
        } catch (const Failure& failure) {
            problem = failure.description();
        }
        if (!lock_) {
            // Somebody else is at work, or nobody can be: the font file alone counts here, and nothing can be
            // done to it.
            state_ = FontState(*font);
            history_ = {};
            found_ = {};
            found_.problem = problem;
            journalSize_ = kSomebodyElses;
            return;
        }
    }
}

// Builds the history of all entries, and the state of those behind the point that the font file stands for.
// False when they do not fit the font file.
bool WorkingCopy::replay(const JournalContent& content, std::shared_ptr<const FontRecord> font) {
    const std::optional<std::size_t> start = startIn(content, digest_);
    if (!start) return false;
    int acts = 0;
    std::optional<tool::FontTime> first;
    tool::FontTime last;
    try {
        for (std::size_t i = 0; i < content.entries.size(); ++i) {
            const auto& [entry, when] = content.entries[i];
            const bool counts = i > *start;
            if (const auto* change = std::get_if<FontChange>(&entry)) {
                if (counts) applyChange(*change, state_);
                history_.add(*change);
            } else if (const auto* ended = std::get_if<ActEnded>(&entry)) {
                if (!history_.endAct(ended->words, ended->screenState, when)) continue;
                acts += counts;
            } else if (const auto* amended = std::get_if<ActAmended>(&entry)) {
                history_.amend(amended->words, amended->screenState);
                continue;
            } else if (std::holds_alternative<ActUndone>(entry)) {
                if (!history_.open().empty() || !history_.undoable()) return false;
                if (counts) takeBack(*history_.undoable(), state_);
                history_.undo();
                acts += counts;
            } else if (std::holds_alternative<ActRedone>(entry)) {
                if (!history_.open().empty() || !history_.redoable()) return false;
                if (counts) doAgain(*history_.redoable(), state_);
                history_.redo();
                acts += counts;
            } else if (const auto* known = std::get_if<KnownState>(&entry)) {
                if (i != *start) continue;
                state_ = stateAt(*known, *font);
                history_.noteSaved(known->saved ? std::optional<std::size_t>(*known->saved) : std::nullopt);
                continue;
            } else if (counts && i + 1 == content.entries.size()) {
                found_.letGo = state_.record();
                return true;
            }
            if (!counts) continue;
            if (!first) first = when;
            last = when;
        }
    } catch (const Failure&) {
        return false;
    }
    if (!history_.isUnsaved()) return true;
    // What stands before the point, in a journal that was written anew, is not counted there.
    const std::size_t saved = history_.saved().value_or(history_.done());
    const std::size_t differing = saved > history_.done() ? saved - history_.done() : history_.done() - saved;
    acts = std::max(acts, static_cast<int>(differing));
    if (!changesUncommittedOnly(history_.open())) ++acts;
    if (!history_.acts().empty() && history_.done() > saved &&
        (!first || history_.acts()[saved].when < *first))
        first = history_.acts()[saved].when;
    if (!first) first = last = content.entries[*start].when;
    found_.recovered = {name_, std::max(acts, 1), *first, std::max(last, *first), {}};
    return true;
}

FontState WorkingCopy::stateAt(const KnownState& known, const FontRecord& font) const {
    FontState state(known.state ? *known.state : font);
    applyChange(AddUncommitted{known.uncommitted}, state);
    return state;
}

void WorkingCopy::dropJournal() {
    journal_.remove();
    journalSize_ = journalUsed_ = 0;
    found_ = {};
    lock_.reset();
}

void WorkingCopy::lock() {
    if (lock_) return;
    if (!unreadable_.empty())
        throw Failure(RuntimeError::PathFileAccessError,
                      "Font \"" + name_ + "\" cannot be changed: " + unreadable_);
    FileLock lock = taken(file_, name_);
    const FontDigest digest = digestOnDisk(file_);
    if (digest == 0)
        throw Failure(RuntimeError::PathFileAccessError,
                      "Font \"" + name_ + "\" was renamed or deleted by another program since it was loaded");
    if (digest != digest_ || journal_.sizeOnDisk() != journalSize_)
        throw Failure(
            RuntimeError::PathFileAccessError,
            "Font \"" + name_ + "\" was changed by another program since it was loaded; load it once more");
    lock_ = std::move(lock);
}

// Makes the journal ready for an entry.
void WorkingCopy::prepare() {
    const bool wasLocked = lock_.has_value();
    lock();
    try {
        isJournalBroken_ |= journal_.hasFailed();
        if (!journal_.isOpen() && !isJournalBroken_) {
            if (journalUsed_ > 0)
                journal_.open(journalUsed_);
            else if (history_.acts().empty() && history_.open().empty())
                begin();
            else
                isJournalBroken_ = true;
        }
        if (isJournalBroken_) rewrite();
    } catch (...) {
        if (!wasLocked) {
            journal_.close();
            lock_.reset();
        }
        throw;
    }
}

void WorkingCopy::begin() {
    journal_.open(0);
    KnownState known;
    known.digest = digest_;
    known.saved = 0;
    journal_.append(known, now());
}

void WorkingCopy::write(const JournalEntry& entry) {
    prepare();
    journal_.append(entry, now());
}

// Wraps what keeps a change from being made.
void WorkingCopy::writeChange(const JournalEntry& entry) {
    lock();
    try {
        write(entry);
    } catch (...) {
        const Failure cause = currentFailure();
        throw Failure(
            cause.number(),
            "Font \"" + name_ + "\" was not changed, as the change cannot be kept: " + cause.description());
    }
}

// All that is in memory, for a journal that begins anew.
std::vector<TimedEntry> WorkingCopy::entries() const {
    std::vector<TimedEntry> all;
    const auto add = [&](const JournalEntry& entry, tool::FontTime when) { all.push_back({entry, when}); };
    const auto time = now();
    if (!history_.firstScreenState().empty()) add(ActAmended{{}, history_.firstScreenState()}, time);
    for (const Act& act : history_.acts()) {
        for (const FontChange& change : act.changes) add(change, act.when);
        add(ActEnded{act.words, act.screenState}, act.when);
    }
    for (std::size_t i = history_.done(); i < history_.acts().size(); ++i) add(ActUndone{}, time);
    for (const FontChange& change : history_.open()) add(change, time);
    KnownState known;
    known.digest = digest_;
    known.uncommitted = uncommittedOf(state_);
    if (history_.saved()) known.saved = static_cast<std::uint32_t>(*history_.saved());
    if (history_.isUnsaved()) known.state = std::make_shared<FontRecord>(state_.record());
    add(known, time);
    return all;
}

void WorkingCopy::rewrite() {
    journal_.rewrite(entries());
    isJournalBroken_ = false;
}

void WorkingCopy::writeJournal() {
    lock_ = taken(file_, name_);
    try {
        rewrite();
    } catch (...) {
        lock_.reset();
        throw;
    }
}

// One that cannot be written anew stays long.
void WorkingCopy::shorten() {
    try {
        do {
            history_.dropOldest(history_.acts().size() / 2);
            rewrite();
        } while (journal_.size() > kLargestJournal / 2 && !history_.acts().empty());
    } catch (...) {
        isJournalBroken_ = true;
    }
}

void WorkingCopy::make(FontChange change) {
    history_.reserve();
    bool isWritten = false;
    try {
        writeChange(change);
        isWritten = true;
    } catch (const Failure&) {
        if (!removesUncommitted(change)) throw;
        isJournalBroken_ = true;
    }
    try {
        applyChange(change, state_);
    } catch (...) {
        if (isWritten) takeBackLast();
        throw;
    }
    noteChange(std::move(change));
}

void WorkingCopy::takeBackLast() {
    try {
        journal_.takeBackLast();
    } catch (...) {
        isJournalBroken_ = true;
    }
}

void WorkingCopy::makeAnyway(FontChange change) {
    history_.reserve();
    try {
        write(change);
    } catch (...) {
        isJournalBroken_ = true;
    }
    applyChange(change, state_);
    noteChange(std::move(change));
}

void WorkingCopy::noteChange(FontChange change) {
    history_.add(std::move(change));
    wasChanged_ = true;
    lastChange_ = std::chrono::steady_clock::now();
}

void WorkingCopy::removeUncommitted() {
    constexpr auto kKind = tool::SampleKind::Uncommitted;
    for (std::size_t count = state_.samples.count(kKind); count-- > 0;)
        make(RemoveSample{kKind, static_cast<std::uint32_t>(count), state_.samples.at(kKind, count)});
}

void WorkingCopy::endAct(std::string_view words, std::string_view screenState) {
    if (history_.open().empty()) return amend(words, screenState);
    const std::string found = words.empty() ? describe(history_.open()) : std::string(words);
    try {
        write(ActEnded{found, std::string(screenState)});
    } catch (...) {
        const Failure cause = currentFailure();
        throw Failure(cause.number(), "What was done last to font \"" + name_ +
                                          "\" is not kept until it is saved: " + cause.description());
    }
    history_.endAct(found, screenState, now());
    if (journal_.size() > kLargestJournal || history_.acts().size() > kMostActs) shorten();
    if (journal_.isOpen()) rest();
}

// The screen's state is worth no failure.
void WorkingCopy::amend(std::string_view words, std::string_view screenState) {
    const Act* last = history_.undoable();
    const bool sameWords = words.empty() || (last && last->words == words);
    if (sameWords && screenState == history_.screenState()) return;
    history_.amend(words, screenState);
    try {
        // A font that nothing is being done to keeps its journal as it is.
        if (journal_.isOpen()) write(ActAmended{std::string(words), std::string(screenState)});
    } catch (...) {
        isJournalBroken_ = true;
    }
}

// An act that cannot be written is kept by what is being done, or nothing of it is.
void WorkingCopy::endOwnAct() {
    if (history_.open().empty()) return;
    try {
        endAct({}, {});
    } catch (...) {
        history_.endAct({}, {}, now());
        isJournalBroken_ = true;
    }
}

std::optional<std::string> WorkingCopy::undoWords() const {
    if (!changesNothing(history_.open())) return describe(history_.open());
    const Act* act = history_.undoable();
    return act ? std::optional(act->words) : std::nullopt;
}

std::optional<std::string> WorkingCopy::redoWords() const {
    const Act* act = changesNothing(history_.open()) ? history_.redoable() : nullptr;
    return act ? std::optional(act->words) : std::nullopt;
}

std::string WorkingCopy::undo() {
    return go(true);
}

std::string WorkingCopy::redo() {
    return go(false);
}

std::string WorkingCopy::go(bool back) {
    endOwnAct();
    if (back ? !history_.undoable() : !history_.redoable())
        throw Failure(RuntimeError::InvalidProcedureCall, back ? kNothingToUndo : kNothingToRedo);
    const Act* act = back ? history_.undoable() : history_.redoable();
    FontState draft = state_;
    if (back)
        takeBack(*act, draft);
    else
        doAgain(*act, draft);
    writeChange(back ? JournalEntry(ActUndone{}) : JournalEntry(ActRedone{}));
    if (back)
        history_.undo();
    else
        history_.redo();
    state_ = std::move(draft);
    wasChanged_ = true;
    rest();
    return history_.screenState();
}

bool WorkingCopy::isChangedUnderneath() const {
    return digestOnDisk(file_) != digest_;
}

// The entry goes before the file: whichever of both the font file is found to be, the journal fits it.
void WorkingCopy::save() {
    endOwnAct();
    if (!history_.isUnsaved()) return release();
    lock();
    const FontRecord font = state_.record();
    const FontDigest digest = digestOf(encodeFont(font));
    bool isKept = true;
    try {
        prepare();
        journal_.append(
            KnownState{digest, nullptr, uncommittedOf(state_), static_cast<std::uint32_t>(history_.done())},
            now());
        journal_.flush();
    } catch (...) {
        isKept = false;  // the font file is worth more than what can be taken back
    }
    FlushDoubt doubt;
    try {
        doubt.allow([&] { writeFont(font, file_); });
    } catch (...) {
        hasFailedToSave_ = true;
        throw;
    }
    digest_ = digest;
    history_.noteSaved();
    hasFailedToSave_ = false;
    if (!isKept) journal_.remove();
    release();
    doubt.tell();
}

// Nothing is unsaved, or it is to stay in the journal.
void WorkingCopy::release() {
    if (lock_ && isJournalBroken_) {
        try {
            rewrite();
        } catch (...) {
            if (!history_.isUnsaved()) journal_.remove();
        }
    }
    if (journal_.isOpen()) {
        if (history_.acts().empty() && history_.open().empty() && !history_.isUnsaved()) journal_.remove();
        journalSize_ = journalUsed_ = journal_.size();
        journal_.close();
    } else if (lock_) {
        journalSize_ = journal_.sizeOnDisk();
        journalUsed_ = std::min(journalUsed_, journalSize_);
    }
    isJournalBroken_ = false;
    lock_.reset();
}

void WorkingCopy::rest() {
    if (history_.isUnsaved() || state_.samples.count(tool::SampleKind::Uncommitted) > 0) return;
    endOwnAct();
    release();
}

void WorkingCopy::letGo(const std::function<void(const FontRecord&)>& keep) {
    removeUncommitted();
    if (!history_.isUnsaved()) return release();
    try {
        keep(state_.record());
    } catch (...) {
        const Failure cause = currentFailure();
        throw Failure(cause.number(), "The changes of font \"" + name_ +
                                          "\" were not let go, as they cannot be kept among its versions: " +
                                          cause.description());
    }
    try {
        write(LetGo{});  // for a journal that cannot be taken away
    } catch (...) {
        isJournalBroken_ = true;
    }
    dropJournal();
}

void WorkingCopy::rename(std::string name, std::string file) {
    if (fileExists(file))
        throw Failure(RuntimeError::FileAlreadyExists, "File already exists: \"" + file + "\"");
    const bool wasLocked = lock_.has_value();
    lock();
    Journal journal(file, *flusher_);
    const bool keepsJournal = history_.isUnsaved() || !history_.acts().empty() || !history_.open().empty();
    FlushDoubt doubt;
    try {
        FileLock lock = taken(file, name);
        if (keepsJournal)
            journal.rewrite(entries());
        else
            journal.remove();  // what a font of that name has left behind
        doubt.allow([&] { renameFont(file_, file); });
        lock_ = std::move(lock);
    } catch (...) {
        if (keepsJournal && !fileExists(file)) journal.remove();
        if (!wasLocked) release();
        throw;
    }
    journal_.remove();
    journal_ = std::move(journal);
    name_ = std::move(name);
    file_ = std::move(file);
    isJournalBroken_ = false;
    journalSize_ = journalUsed_ = journal_.size();
    if (!wasLocked) release();
    doubt.tell();
}

void WorkingCopy::revertTraining(TrainingPtr saved) {
    endOwnAct();
    if (*saved == *state_.training) return;
    make(SetTraining{state_.training, std::move(saved), {}, {}, {}});
    endOwnAct();
    // When there was nothing but training, the font is what its file holds.
    const std::size_t from = history_.saved().value_or(history_.done());
    for (std::size_t i = from; i < history_.done(); ++i)
        if (!changesTrainingOnly(history_.acts()[i].changes)) return;
    if (from >= history_.done() || state_.samples.count(tool::SampleKind::Uncommitted) > 0) return;
    write(KnownState{digest_, nullptr, {}, static_cast<std::uint32_t>(history_.done())});
    history_.noteSaved();
    rest();
}

}  // namespace dravik::engine
