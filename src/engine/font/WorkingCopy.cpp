#include "engine/font/WorkingCopy.h"

#include <utility>

#include "base/AtomicFile.h"
#include "base/Failure.h"
#include "base/FileSystem.h"
#include "engine/font/FontVersions.h"

namespace dravik::engine {
namespace {

constexpr char kNothingToUndo[] = "There is nothing to undo";
constexpr char kNothingToRedo[] = "There is nothing to redo";

bool removesUncommitted(const FontChange& change) {
    const auto* removal = std::get_if<RemoveSample>(&change);
    return removal && removal->kind == tool::SampleKind::Uncommitted;
}

// Takes the place of a failure that is being handled.
[[noreturn]] void raiseAs(const std::string& words) {
    const Failure cause = currentFailure();
    throw Failure(cause.number(), words + cause.description());
}

}  // namespace

WorkingCopy::WorkingCopy(std::string name, std::string file, JournalFlusher& flusher)
    : journal_(std::move(name), std::move(file), flusher) {
    open();
}

WorkingCopy::~WorkingCopy() {
    try {
        journal_.release(font_);
    } catch (...) {
        return;  // what was written before is in the journal
    }
}

// A journal with unsaved changes is read once more after its lock was taken: whoever held that may have saved
// them meanwhile.
void WorkingCopy::open() {
    for (;;) {
        const std::vector<std::uint8_t> bytes = readFontBytes(file());
        const FontRecord font = decodeFont(bytes, file());
        font_ = {FontState(font), {}, digestOf(bytes)};
        std::optional<JournalContent> content;
        try {
            content = journal_.read();
        } catch (const Failure& failure) {
            found_.problem = failure.description();
        }
        if (!content) return journal_.unlock();
        std::optional<Replayed> replayed = replayJournal(*content, font, font_.digest, name());
        // Half an include of a program that died is to be taken out of it, too.
        if (replayed && !replayed->letGo && !replayed->font.history.isUnsaved() &&
            replayed->font.history.open().empty()) {
            font_ = std::move(replayed->font);
            return journal_.unlock();
        }
        if (journal_.isLocked()) return openLocked(std::move(replayed));
        try {
            if (journal_.tryLock()) continue;
        } catch (const Failure& failure) {
            found_.problem = failure.description();
        }
        // Somebody else is at work, or nobody can be: the font file alone counts here, and nothing can be
        // done to it.
        return journal_.leaveToOthers();
    }
}

void WorkingCopy::openLocked(std::optional<Replayed> replayed) {
    found_.isForeign = !replayed;
    if (!replayed) return;
    found_.letGo = std::move(replayed->letGo);
    if (found_.letGo) return;
    found_.recovered = std::move(replayed->recovered);
    font_ = std::move(replayed->font);
    journal_.open();
    removeUncommitted();
    if (!font_.history.open().empty()) endAct({}, {});
    wasChanged_ = false;
    rest();
}

void WorkingCopy::dropJournal() {
    journal_.drop();
    found_ = {};
}

// Says what keeps a change from being made.
template <class Entry>
void WorkingCopy::writeChange(const Entry& entry) {
    lock();
    try {
        journal_.write(entry, font_);
    } catch (...) {
        raiseAs("Font \"" + name() + "\" was not changed, as the change cannot be kept: ");
    }
}

void WorkingCopy::make(FontChange change) {
    font_.history.reserve();
    bool isWritten = false;
    try {
        writeChange<JournalEntry>(change);
        isWritten = true;
    } catch (const Failure&) {
        if (!removesUncommitted(change)) throw;
        journal_.noteMissing();
    }
    try {
        applyChange(change, font_.state);
    } catch (...) {
        if (isWritten) journal_.takeBackLast();
        throw;
    }
    noteChange(std::move(change));
}

void WorkingCopy::make(std::vector<FontChange> changes) {
    if (changes.empty()) return;
    font_.history.reserve(changes.size());
    FontState draft = font_.state;
    for (const FontChange& change : changes) applyChange(change, draft);
    writeChange<std::span<const FontChange>>(changes);
    font_.state = std::move(draft);
    for (FontChange& change : changes) noteChange(std::move(change));
}

void WorkingCopy::makeAnyway(FontChange change) {
    font_.history.reserve();
    journal_.tryWrite(change, font_);
    applyChange(change, font_.state);
    noteChange(std::move(change));
}

void WorkingCopy::noteChange(FontChange change) {
    font_.history.add(std::move(change));
    wasChanged_ = true;
    lastChange_ = std::chrono::steady_clock::now();
}

void WorkingCopy::removeUncommitted() {
    constexpr auto kKind = tool::SampleKind::Uncommitted;
    const SampleStore& samples = font_.state.samples;
    for (std::size_t count = samples.count(kKind); count-- > 0;)
        make(RemoveSample{kKind, static_cast<std::uint32_t>(count), samples.at(kKind, count)});
}

void WorkingCopy::endAct(std::string_view words, std::string_view screenState) {
    ActHistory& history = font_.history;
    if (history.open().empty()) return amend(words, screenState);
    const std::string found = words.empty() ? describe(history.open()) : std::string(words);
    try {
        journal_.write(ActEnded{found, std::string(screenState)}, font_);
    } catch (...) {
        raiseAs("What was done last to font \"" + name() + "\" is not kept until it is saved: ");
    }
    history.endAct(found, screenState, timeNow());
    journal_.shorten(font_);
    if (journal_.isOpen()) rest();
}

// The screen's state is worth no failure.
void WorkingCopy::amend(std::string_view words, std::string_view screenState) {
    ActHistory& history = font_.history;
    const Act* last = history.undoable();
    const bool sameWords = words.empty() || (last && last->words == words);
    if (sameWords && screenState == history.screenState()) return;
    history.amend(words, screenState);
    // A font that nothing is being done to keeps its journal as it is.
    if (journal_.isOpen()) journal_.tryWrite(ActAmended{std::string(words), std::string(screenState)}, font_);
}

// An act that cannot be written is kept by what is being done, or nothing of it is.
void WorkingCopy::endOwnAct() {
    if (font_.history.open().empty()) return;
    try {
        endAct({}, {});
    } catch (...) {
        font_.history.endAct({}, {}, timeNow());
        journal_.noteMissing();
    }
}

std::optional<std::string> WorkingCopy::undoWords() const {
    if (!changesNothing(history().open())) return describe(history().open());
    const Act* act = history().undoable();
    return act ? std::optional(act->words) : std::nullopt;
}

std::optional<std::string> WorkingCopy::redoWords() const {
    const Act* act = changesNothing(history().open()) ? history().redoable() : nullptr;
    return act ? std::optional(act->words) : std::nullopt;
}

std::string WorkingCopy::go(bool back) {
    endOwnAct();
    ActHistory& history = font_.history;
    const Act* act = back ? history.undoable() : history.redoable();
    if (!act) throw Failure(RuntimeError::InvalidProcedureCall, back ? kNothingToUndo : kNothingToRedo);
    FontState draft = font_.state;
    if (back)
        revertAct(*act, draft);
    else
        applyAct(*act, draft);
    writeChange<JournalEntry>(back ? JournalEntry(ActUndone{}) : JournalEntry(ActRedone{}));
    if (back)
        history.undo();
    else
        history.redo();
    font_.state = std::move(draft);
    wasChanged_ = true;
    rest();
    return history.screenState();
}

// The entry goes before the file: whichever of both the font file is found to be, the journal fits it.
void WorkingCopy::save() {
    endOwnAct();
    if (!isUnsaved()) return journal_.release(font_);
    lock();
    const FontRecord font = font_.state.record();
    const FontDigest digest = digestOf(encodeFont(font));
    bool isKept = true;
    try {
        journal_.write(savedState(font_, digest), font_);
        journal_.flush();
    } catch (...) {
        isKept = false;  // the font file is worth more than what can be taken back
    }
    FlushDoubt doubt;
    try {
        doubt.allow([&] { writeFont(font, file()); });
    } catch (...) {
        hasFailedToSave_ = true;
        throw;
    }
    font_.digest = digest;
    font_.history.noteSaved();
    hasFailedToSave_ = false;
    if (!isKept) journal_.remove();
    journal_.release(font_);
    doubt.tell();
}

void WorkingCopy::rest() {
    if (isUnsaved() || font_.state.samples.count(tool::SampleKind::Uncommitted) > 0) return;
    endOwnAct();
    journal_.release(font_);
}

void WorkingCopy::letGo(const std::function<void(const FontRecord&)>& keep) {
    removeUncommitted();
    if (!isUnsaved()) return journal_.release(font_);
    try {
        keep(font_.state.record());
    } catch (...) {
        raiseAs("The changes of font \"" + name() +
                "\" were not let go, as they cannot be kept among its versions: ");
    }
    journal_.tryWrite(LetGo{}, font_);  // for a journal that cannot be taken away
    dropJournal();
}

void WorkingCopy::rename(std::string name, std::string file) {
    if (fileExists(file))
        throw Failure(RuntimeError::FileAlreadyExists, "File already exists: \"" + file + "\"");
    FlushDoubt doubt;
    journal_.rename(std::move(name), file, font_,
                    [&] { doubt.allow([&] { renameFont(journal_.fontFile(), file); }); });
    doubt.tell();
}

void WorkingCopy::revertTraining(TrainingPtr saved) {
    endOwnAct();
    ActHistory& history = font_.history;
    if (*saved == *font_.state.training) return;
    make(SetTraining{font_.state.training, std::move(saved), {}, {}, {}});
    endOwnAct();
    // When there was nothing but training, the font is what its file holds.
    const std::size_t from = history.saved().value_or(history.done());
    for (std::size_t i = from; i < history.done(); ++i)
        if (!changesTrainingOnly(history.acts()[i].changes)) return;
    if (from >= history.done() || font_.state.samples.count(tool::SampleKind::Uncommitted) > 0) return;
    journal_.write(savedState(font_, font_.digest), font_);
    history.noteSaved();
    rest();
}

}  // namespace dravik::engine
