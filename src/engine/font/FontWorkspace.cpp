#include "engine/font/FontWorkspace.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "base/Failure.h"
#include "base/FileSystem.h"
#include "base/TimeText.h"

namespace dravik::engine {
namespace {

// Where nobody says when an act has ended, changes as near to each other belong to one.
constexpr std::chrono::milliseconds kOneAct{100};

bool hasUncommitted(const WorkingCopy& copy) {
    return copy.state().samples.count(tool::SampleKind::Uncommitted) > 0;
}

// Two fonts with neither samples nor training that have the same characters.
bool isSameUntaught(const FontRecord& one, const FontRecord& other) {
    return one.samples.empty() && other.samples.empty() && one.training.empty() && other.training.empty() &&
           one.characterSet == other.characterSet;
}

}  // namespace

FontWorkspace::FontWorkspace(const JobFolder& folder, bool remembersFont)
    : library_(folder, remembersFont), versions_(folder.fontsFolder()) {}

FontWorkspace::~FontWorkspace() {
    for (auto& [name, copy] : copies_) {
        if (keepsUnsaved_ || copy->hasFailedToSave() || !copy->wasChanged()) continue;
        try {
            letGo(*copy);
        } catch (...) {
            continue;  // they stay in the journal
        }
    }
}

const WorkingCopy& FontWorkspace::font() const {
    if (!current_) throw Failure(RuntimeError::ObjectNotSet, "No font is loaded");
    return *current_;
}

WorkingCopy* FontWorkspace::openCopy(const std::string& name) const {
    const auto place = copies_.find(name);
    return place == copies_.end() ? nullptr : place->second.get();
}

// A journal that cannot be used is kept among the versions.
FontWorkspace::CopyPtr FontWorkspace::opened(const std::string& name) {
    auto copy = std::make_unique<WorkingCopy>(name, library_.existingFile(name), flusher_);
    if (copy->found().letGo) {
        versions_.keepDiscarded(name, encodeFont(*copy->found().letGo));
        copy->dropJournal();
    } else if (copy->found().isForeign) {
        versions_.keepJournal(name, copy->journalFile());
        tool::RecoveredChanges told;
        told.font = name;
        told.problem = "the font was changed by another program";
        recovered_.push_back(std::move(told));
        copy->dropJournal();
    } else if (copy->found().recovered) {
        recovered_.push_back(*copy->found().recovered);
    } else if (!copy->found().problem.empty()) {
        tool::RecoveredChanges told;
        told.font = name;
        told.problem = copy->found().problem;
        told.areInJournal = true;
        recovered_.push_back(std::move(told));
    }
    return copy;
}

// The working copy of a font, which is opened when it is not.
WorkingCopy& FontWorkspace::open(const std::string& name) {
    if (WorkingCopy* copy = openCopy(name)) return *copy;
    return *(copies_[name] = opened(name));
}

// Null for a font file that is damaged.
WorkingCopy* FontWorkspace::openIfReadable(const std::string& name) {
    try {
        return &open(name);
    } catch (const Failure& failure) {
        if (failure.number() != static_cast<std::int32_t>(RuntimeError::DeviceIoError)) throw;
        return nullptr;
    }
}

// A font without unsaved changes is read again when it is needed.
void FontWorkspace::close(const std::string& name) {
    if (const WorkingCopy* copy = openCopy(name); copy && copy != current_ && !copy->isUnsaved())
        copies_.erase(name);
}

void FontWorkspace::leave() {
    if (!current_) return;
    current_->removeUncommitted();
    const std::string name = std::exchange(current_, nullptr)->name();
    close(name);
}

void FontWorkspace::enter(WorkingCopy* copy) {
    current_ = copy;
    library_.select(copy ? std::optional(copy->name()) : std::nullopt);
}

bool FontWorkspace::load(const std::string& asked) {
    const std::string name = library_.spelling(asked);
    library_.existingFile(name);
    // The operator who chooses the font that is shown once more does not mean to lose what was done to it.
    if (current_ && current_->name() == name) {
        if (current_->isUnsaved() || hasUncommitted(*current_)) return false;
        current_->rest();
        CopyPtr& place = copies_[name];
        place = opened(name);
        enter(place.get());
        return true;
    }
    WorkingCopy& coming = open(name);
    leave();
    enter(&coming);
    return true;
}

void FontWorkspace::create(const std::string& name) {
    const std::string file = library_.file(name);
    // A font whose name differs only in case is the one that is replaced, and gets the name as it is now
    // given.
    FlushDoubt doubt;
    if (const std::string other = library_.spelling(name); other != name)
        doubt.allow([&] { rename(name, other); });
    doubt.allow([&] { replace(name, {}); });
    if (WorkingCopy& made = open(name); &made != current_) {
        leave();
        enter(&made);
    }
    doubt.tell();
}

// A font that has no readable file yet; what cannot be read is kept as a version.
void FontWorkspace::writeNew(const std::string& name, const FontRecord& font) {
    const std::string file = library_.file(name);
    if (fileExists(journalOf(file))) versions_.keepJournal(name, journalOf(file));
    deleted_.reset();
    writeFont(font, file);
}

// Makes the font of that name the one given, or makes one; its file is written.
void FontWorkspace::replace(const std::string& name, const FontRecord& font) {
    // What another program has made of it meanwhile is what is replaced.
    if (WorkingCopy* copy = openCopy(name); copy && !copy->isUnsaved() && copy->isChangedUnderneath()) {
        if (copy == current_) current_ = nullptr;
        copies_.erase(name);
    }
    WorkingCopy* old = fileExists(library_.file(name)) ? openIfReadable(name) : nullptr;
    if (!old) return writeNew(name, font);
    deleted_.reset();
    old->lock();
    old->removeUncommitted();
    old->endAct({}, {});
    auto before = std::make_shared<FontRecord>(old->state().record());
    if (!isSameUntaught(*before, font)) {
        old->make(ReplaceFont{std::move(before), std::make_shared<FontRecord>(font)});
        old->endAct({}, {});
    }
    FlushDoubt doubt;
    doubt.allow([&] { writeBack(*old); });
    close(name);
    doubt.tell();
}

void FontWorkspace::remove(const std::string& asked) {
    const std::string name = library_.spelling(asked);
    const std::string file = library_.existingFile(name);
    WorkingCopy* copy = openIfReadable(name);
    deleted_.reset();
    FlushDoubt doubt;
    if (copy) {
        copy->removeUncommitted();
        copy->lock();
        Deleted deleted{{}, readFontBytes(file), current_ == copy};
        if (copy->isUnsaved()) versions_.keepDiscarded(name, encodeFont(copy->state().record()));
        doubt.allow([&] { retireFont(file); });
        if (deleted.wasCurrent) current_ = nullptr;
        deleted.copy = copies_.extract(name);
        copy->dropJournal();
        deleted_ = std::move(deleted);
    } else {
        doubt.allow([&] { retireFont(file); });
    }
    if (library_.selected() == name) library_.select(std::nullopt);
    doubt.tell();
}

// The journal first: without its font file it says nothing.
std::string FontWorkspace::bringBackDeleted() {
    WorkingCopy& copy = *deleted_->copy.mapped();
    const std::string file = library_.freeFile(copy.name());
    copy.writeJournal();
    FlushDoubt doubt;
    try {
        doubt.allow([&] { writeFontBytes(deleted_->file, file, false); });
    } catch (...) {
        copy.dropJournal();
        throw;
    }
    copies_.insert(std::move(deleted_->copy));
    const bool wasCurrent = deleted_->wasCurrent;
    deleted_.reset();
    copy.rest();
    if (wasCurrent) {
        leave();
        enter(&copy);
    } else {
        close(copy.name());
    }
    doubt.tell();
    return current_ ? current_->history().screenState() : std::string();
}

void FontWorkspace::rename(const std::string& newName, const std::string& asked) {
    const std::string name = library_.spelling(asked);
    const std::string from = library_.existingFile(name), to = library_.freeFile(newName, name);
    const bool wasSelected = library_.selected() == name;
    FlushDoubt doubt;
    if (WorkingCopy* copy = openIfReadable(name)) {
        std::string key = newName;
        doubt.allow([&] { copy->rename(newName, to); });
        auto entry = copies_.extract(name);
        entry.key().swap(key);
        copies_.insert(std::move(entry));
        close(newName);
    } else {
        doubt.allow([&] { renameFont(from, to); });
    }
    if (wasSelected) library_.select(newName);
    doubt.tell();
}

// The font as it is shown: with what is not saved.
FontRecord FontWorkspace::shown(const std::string& asked) {
    const std::string name = library_.spelling(asked);
    FontRecord font = open(name).state().record();
    close(name);
    return font;
}

void FontWorkspace::duplicate(const std::string& newName, const std::string& existingName) {
    const FontRecord font = shown(existingName);
    library_.freeFile(newName);
    writeNew(newName, font);
}

void FontWorkspace::save(const std::string& asked) {
    const std::string name = library_.spelling(asked);
    if (font().name() == name) return writeBack(*current_);
    replace(name, font().state().record());
}

// Saves a working copy; beside its file when that was changed by somebody else.
void FontWorkspace::writeBack(WorkingCopy& copy) {
    if (!copy.isChangedUnderneath()) return copy.save();
    std::string time = localTimeText();
    std::replace(time.begin(), time.end(), ':', '.');
    const std::string beside = copy.name() + " (" + time + ")";
    FlushDoubt doubt;
    doubt.allow([&] { writeFont(copy.state().record(), library_.freeFile(beside)); });
    throw Failure(RuntimeError::PathFileAccessError,
                  "Font \"" + copy.name() +
                      "\" was changed, renamed or deleted by another program since it was loaded, and was "
                      "left as it is; what is here was saved as font \"" +
                      beside + "\"");
}

void FontWorkspace::revert(const std::string& asked) {
    const std::string name = library_.spelling(asked);
    if (font().name() != name)
        throw Failure(RuntimeError::InvalidProcedureCall,
                      "Font \"" + name + "\" is not the one that is loaded");
    current_->revertTraining(
        std::make_shared<const Training>(readFont(library_.existingFile(name)).training));
}

void FontWorkspace::endActByTime() {
    if (!actsAreEnded_ && !hasUncommitted(*current_) && !current_->history().open().empty() &&
        std::chrono::steady_clock::now() - current_->lastChange() > kOneAct)
        current_->endAct({}, {});
}

void FontWorkspace::claim() {
    font();
    current_->lock();
}

void FontWorkspace::make(FontChange change) {
    font();
    endActByTime();
    current_->make(std::move(change));
    deleted_.reset();
}

void FontWorkspace::make(std::vector<FontChange> changes) {
    font();
    endActByTime();
    current_->make(std::move(changes));
    deleted_.reset();
}

void FontWorkspace::makeAnyway(FontChange change) {
    font();
    try {
        endActByTime();
    } catch (const Failure&) {
        // It is one act with the change that follows.
    }
    current_->makeAnyway(std::move(change));
    deleted_.reset();
}

void FontWorkspace::endAct(std::string_view words, std::string_view screenState) {
    actsAreEnded_ = true;
    if (current_) current_->endAct(words, screenState);
}

std::optional<std::string> FontWorkspace::undoWords() const {
    if (deleted_) return "deletion of font " + deleted_->copy.key();
    return current_ ? current_->undoWords() : std::nullopt;
}

std::optional<std::string> FontWorkspace::redoWords() const {
    return current_ ? current_->redoWords() : std::nullopt;
}

std::string FontWorkspace::undo() {
    if (deleted_) return bringBackDeleted();
    if (!current_) throw Failure(RuntimeError::InvalidProcedureCall, "There is nothing to undo");
    return current_->undo();
}

std::string FontWorkspace::redo() {
    if (!current_) throw Failure(RuntimeError::InvalidProcedureCall, "There is nothing to redo");
    std::string screenState = current_->redo();
    deleted_.reset();
    return screenState;
}

std::vector<std::string> FontWorkspace::unsavedFonts() const {
    std::vector<std::string> names;
    for (const auto& [name, copy] : copies_)
        if (copy->isUnsaved()) names.push_back(name);
    return names;
}

void FontWorkspace::saveUnsaved(const std::string& font) {
    WorkingCopy* copy = openCopy(library_.spelling(font));
    if (!copy) return;
    FlushDoubt doubt;
    doubt.allow([&] { writeBack(*copy); });
    close(copy->name());
    doubt.tell();
}

void FontWorkspace::letGo(WorkingCopy& copy) {
    copy.letGo([&](const FontRecord& font) { versions_.keepDiscarded(copy.name(), encodeFont(font)); });
}

void FontWorkspace::discardUnsaved(const std::string& font) {
    const std::string name = library_.spelling(font);
    WorkingCopy* copy = openCopy(name);
    if (!copy || !copy->isUnsaved()) return;
    letGo(*copy);
    const bool isCurrent = copy == current_;
    current_ = isCurrent ? nullptr : current_;
    copies_.erase(name);
    if (!isCurrent) return;
    try {
        enter(&open(name));
    } catch (...) {
        const Failure cause = currentFailure();
        throw Failure(cause.number(),
                      "The changes of font \"" + name +
                          "\" were let go; what is saved of it cannot be opened: " + cause.description());
    }
}

void FontWorkspace::exportFont(const std::string& font, const std::string& file) {
    engine::exportFont(shown(font), file);
}

std::vector<tool::RecoveredChanges> FontWorkspace::takeRecovered() {
    return std::exchange(recovered_, {});
}

std::vector<tool::FontVersion> FontWorkspace::versions(const std::string& font) const {
    return versions_.list(font.empty() ? font : library_.spelling(font));
}

void FontWorkspace::importFont(const std::string& file, const std::string& name) {
    replaceSaved(name, readFont(file));
}

void FontWorkspace::restoreVersion(const tool::FontVersion& version, const std::string& name) {
    replaceSaved(name, versions_.read(version));
}

void FontWorkspace::replaceSaved(const std::string& asked, const FontRecord& font) {
    const std::string name = library_.spelling(asked);
    if (const WorkingCopy* copy = openCopy(name); copy && copy->isUnsaved())
        throw Failure(RuntimeError::InvalidProcedureCall,
                      "Font \"" + name + "\" has unsaved changes; save or discard them first");
    replace(name, font);
}

}  // namespace dravik::engine
