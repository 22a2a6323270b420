#include "engine/font/ActHistory.h"

#include <algorithm>
#include <utility>

namespace dravik::engine {

void applyAct(const Act& act, FontState& state) {
    for (const FontChange& change : act.changes) applyChange(change, state);
}

void revertAct(const Act& act, FontState& state) {
    for (auto change = act.changes.rbegin(); change != act.changes.rend(); ++change)
        revertChange(*change, state);
}

void ActHistory::reserve(std::size_t count) {
    const std::size_t coming = open_.size() + count;
    if (coming > open_.capacity()) open_.reserve(std::max<std::size_t>(16, 2 * coming));
}

bool ActHistory::endAct(std::string_view words, std::string_view screenState, tool::FontTime when) {
    if (changesNothing(open_)) {
        open_.clear();
        return false;
    }
    Act act{{}, words.empty() ? describe(open_) : std::string(words), std::string(screenState), when};
    acts_.push_back(std::move(act));
    acts_.back().changes = std::exchange(open_, {});
    if (saved_ && *saved_ > done_) saved_.reset();
    // The new act takes the place of those that were taken back.
    const auto undone = acts_.begin() + static_cast<std::ptrdiff_t>(done_);
    acts_.erase(undone, acts_.end() - 1);
    ++done_;
    return true;
}

void ActHistory::amend(std::string_view words, std::string_view screenState) {
    if (done_ == 0) {
        firstScreenState_ = screenState;
        return;
    }
    Act& act = acts_[done_ - 1];
    act.screenState = screenState;
    if (!words.empty()) act.words = words;
}

const std::string& ActHistory::screenState() const {
    return done_ > 0 ? acts_[done_ - 1].screenState : firstScreenState_;
}

// Settings that were changed and, with nothing else between, changed back are those that were saved.
bool ActHistory::isUnsaved() const {
    if (!saved_ || !changesUncommittedOnly(open_)) return true;
    const auto [from, to] = std::minmax(*saved_, done_);
    const SetSettings *first = nullptr, *last = nullptr;
    for (std::size_t i = from; i < to; ++i) {
        for (const FontChange& change : acts_[i].changes) {
            last = std::get_if<SetSettings>(&change);
            if (!last) return true;
            if (!first) first = last;
        }
    }
    return first && first->before != last->after;
}

void ActHistory::dropOldest(std::size_t left) {
    if (acts_.size() <= left) return;
    const std::size_t count = std::min(acts_.size() - left, done_);
    if (count == 0) return;
    firstScreenState_ = acts_[count - 1].screenState;
    acts_.erase(acts_.begin(), acts_.begin() + static_cast<std::ptrdiff_t>(count));
    done_ -= count;
    if (saved_) saved_ = *saved_ >= count ? std::optional(*saved_ - count) : std::nullopt;
}

}  // namespace dravik::engine
