// The acts of the operator on one font, in order: those that are done and those that were taken back, the
// changes of the act that goes on, and the place among them at which the font was saved.
#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "engine/font/FontChange.h"
#include "tool/FontHistory.h"

namespace dravik::engine {

struct Act {
    std::vector<FontChange> changes;
    std::string words;        // to follow "Undo "
    std::string screenState;  // after it, as it was handed in
    tool::FontTime when;      // it ended
};
// Raise Failure when the act does not fit the state; what of it was done by then stays.
void applyAct(const Act& act, FontState& state);
void revertAct(const Act& act, FontState& state);

class ActHistory {
  public:
    // Changes since the last act ended.
    const std::vector<FontChange>& open() const noexcept { return open_; }
    // Makes room first, so that one that raises has changed nothing and the next `count` of add() raise
    // nothing.
    void reserve(std::size_t count = 1);
    void add(FontChange change) { open_.push_back(std::move(change)); }

    // Makes an act of the open changes; what was taken back before cannot be done again then. False, and the
    // changes are forgotten, when they come to nothing. Words that are "" are found.
    bool endAct(std::string_view words, std::string_view screenState, tool::FontTime when);
    // Replaces the screen's state kept with the last act that is done, and its words unless they are "".
    void amend(std::string_view words, std::string_view screenState);

    const std::deque<Act>& acts() const noexcept { return acts_; }
    std::size_t done() const noexcept { return done_; }
    bool isEmpty() const noexcept { return acts_.empty() && open_.empty(); }
    // The screen's state before the first act.
    const std::string& firstScreenState() const noexcept { return firstScreenState_; }
    // After the last act that is done.
    const std::string& screenState() const;
    // Null when there is none.
    const Act* undoable() const noexcept { return done_ > 0 ? &acts_[done_ - 1] : nullptr; }
    const Act* redoable() const noexcept { return done_ < acts_.size() ? &acts_[done_] : nullptr; }
    // There is one, and no change is open.
    void undo() { --done_; }
    void redo() { ++done_; }

    // No change is open.
    void noteSaved() { saved_ = done_; }
    void noteSaved(std::optional<std::size_t> acts) { saved_ = acts; }
    // How many acts were done when the font was saved; nothing when that cannot be reached any more.
    const std::optional<std::size_t>& saved() const noexcept { return saved_; }
    // The font differs from what was saved, in more than uncommitted samples.
    bool isUnsaved() const;

    // Forgets the oldest acts that are done, until as many are left.
    void dropOldest(std::size_t left);

  private:
    std::deque<Act> acts_;
    std::size_t done_ = 0;
    std::vector<FontChange> open_;
    std::optional<std::size_t> saved_ = 0;
    std::string firstScreenState_;
};

}  // namespace dravik::engine
