#include "engine/font/FontChange.h"

#include <algorithm>
#include <optional>
#include <set>
#include <utility>

#include "base/Failure.h"
#include "base/Text.h"

namespace dravik::engine {
namespace {

using tool::SampleKind;

void check(bool fits) {
    if (!fits)
        throw Failure(RuntimeError::DeviceIoError, "A kept change does not fit the font that it was made to");
}

// The serial numbers of all samples ascend, committed ones first.
std::uint64_t lastSerial(const SampleStore& samples, SampleKind kind) {
    const std::size_t count = samples.count(kind);
    return count > 0 ? samples.at(kind, count - 1).sample.serial : 0;
}

void checkComing(const SampleStore& samples, std::span<const Sample> coming) {
    std::uint64_t last =
        std::max(lastSerial(samples, SampleKind::Committed), lastSerial(samples, SampleKind::Uncommitted));
    for (const Sample& sample : coming) {
        check(sample.serial > last);
        last = sample.serial;
    }
}

struct Apply {
    FontState& state;

    void operator()(const AddUncommitted& change) const {
        checkComing(state.samples, change.samples);
        state.samples.add(change.samples);
    }
    void operator()(const CommitUncommitted& change) const {
        check(change.count == state.samples.count(SampleKind::Uncommitted));
        state.samples.commit();
    }
    void operator()(const RemoveSample& change) const {
        check(change.place < state.samples.count(change.kind) &&
              state.samples.at(change.kind, change.place).sample.serial == change.removed.sample.serial);
        state.samples.remove(change.kind, change.place);
    }
    void operator()(const RelabelSamples& change) const {
        const std::vector<std::int32_t> codes(change.serials.size(), change.codeAfter);
        check(state.samples.relabel(change.serials, codes, {}));
    }
    void operator()(const SetCharacters& change) const { state.characterSet = change.after; }
    void operator()(const SetSettings& change) const { state.settings = change.after; }
    void operator()(const SetTraining& change) const {
        state.samples.setDistances(change.serials, change.distancesAfter);
        state.training = change.after;
    }
    void operator()(const ReplaceFont& change) const {
        check(state.samples.count(SampleKind::Uncommitted) == 0);
        state.replace(*change.after);
    }
};

struct Revert {
    FontState& state;

    void operator()(const AddUncommitted& change) const {
        const std::size_t count = state.samples.count(SampleKind::Uncommitted);
        check(change.samples.size() <= count);
        for (std::size_t i = 0; i < change.samples.size(); ++i)
            check(
                state.samples.at(SampleKind::Uncommitted, count - change.samples.size() + i).sample.serial ==
                change.samples[i].serial);
        for (std::size_t i = 0; i < change.samples.size(); ++i)
            state.samples.remove(SampleKind::Uncommitted, count - 1 - i);
    }
    void operator()(const CommitUncommitted& change) const {
        check(state.samples.count(SampleKind::Uncommitted) == 0 &&
              change.count <= state.samples.count(SampleKind::Committed));
        state.samples.uncommit(change.count);
    }
    void operator()(const RemoveSample& change) const {
        const std::size_t count = state.samples.count(change.kind);
        const std::uint64_t serial = change.removed.sample.serial;
        check(change.place <= count);
        check(change.place == 0 || state.samples.at(change.kind, change.place - 1).sample.serial < serial);
        check(change.place == count || state.samples.at(change.kind, change.place).sample.serial > serial);
        state.samples.insert(change.kind, change.place, change.removed);
    }
    void operator()(const RelabelSamples& change) const {
        check(state.samples.relabel(change.serials, change.codesBefore, change.distancesBefore));
    }
    void operator()(const SetCharacters& change) const { state.characterSet = change.before; }
    void operator()(const SetSettings& change) const { state.settings = change.before; }
    void operator()(const SetTraining& change) const {
        state.samples.setDistances(change.serials, change.distancesBefore);
        state.training = change.before;
    }
    void operator()(const ReplaceFont& change) const {
        check(state.samples.count(SampleKind::Uncommitted) == 0);
        state.replace(*change.before);
    }
};

std::string counted(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " sample" : " samples");
}

// Counts what changes of each kind there are.
struct Summary {
    std::size_t found = 0;
    std::size_t committed = 0;
    std::size_t removed = 0;
    std::optional<std::int32_t> removedCode;
    bool removedSeveral = false;
    std::size_t relabelled = 0;
    std::int32_t relabelledAs = 0;
    bool characters = false;
    bool settings = false;
    bool replaced = false;
    const SetTraining* training = nullptr;

    void operator()(const AddUncommitted& change) { found += change.samples.size(); }
    void operator()(const CommitUncommitted& change) { committed += change.count; }
    void operator()(const RemoveSample& change) {
        if (change.kind != SampleKind::Committed) return;
        ++removed;
        const std::int32_t code = change.removed.sample.code;
        removedSeveral |= removedCode.value_or(code) != code;
        removedCode = code;
    }
    void operator()(const RelabelSamples& change) {
        relabelled += change.serials.size();
        relabelledAs = change.codeAfter;
    }
    void operator()(const SetCharacters&) { characters = true; }
    void operator()(const SetSettings&) { settings = true; }
    void operator()(const SetTraining& change) { training = &change; }
    void operator()(const ReplaceFont&) { replaced = true; }
};

// How many uncommitted samples the changes have left of those that they found; nothing when they did more.
std::optional<std::size_t> leftOfFound(std::span<const FontChange> changes, bool mayTrain = false) {
    std::set<std::uint64_t> found;
    const SetCharacters* first = nullptr;
    const SetCharacters* last = nullptr;
    const SetSettings* firstSettings = nullptr;
    const SetSettings* lastSettings = nullptr;
    for (const FontChange& change : changes) {
        if (const auto* add = std::get_if<AddUncommitted>(&change)) {
            for (const Sample& sample : add->samples) found.insert(sample.serial);
        } else if (const auto* remove = std::get_if<RemoveSample>(&change)) {
            if (found.erase(remove->removed.sample.serial) == 0) return std::nullopt;
        } else if (const auto* set = std::get_if<SetCharacters>(&change)) {
            if (!first) first = set;
            last = set;
        } else if (const auto* settings = std::get_if<SetSettings>(&change)) {
            if (!firstSettings) firstSettings = settings;
            lastSettings = settings;
        } else if (!mayTrain || !std::holds_alternative<SetTraining>(change)) {
            return std::nullopt;
        }
    }
    if (first && first->before != last->after) return std::nullopt;
    if (firstSettings && firstSettings->before != lastSettings->after) return std::nullopt;
    return found.size();
}

}  // namespace

void applyChange(const FontChange& change, FontState& state) {
    std::visit(Apply{state}, change);
}

void revertChange(const FontChange& change, FontState& state) {
    std::visit(Revert{state}, change);
}

bool changesNothing(std::span<const FontChange> changes) {
    return leftOfFound(changes) == 0U;
}

bool changesTrainingOnly(std::span<const FontChange> changes) {
    return leftOfFound(changes, true) == 0U;
}

bool changesUncommittedOnly(std::span<const FontChange> changes) {
    return leftOfFound(changes).has_value();
}

std::string describe(std::span<const FontChange> changes) {
    Summary sum;
    for (const FontChange& change : changes) std::visit(std::ref(sum), change);
    if (sum.replaced) return "replacement of the font";
    if (sum.training) return sum.training->serials.empty() ? "return to the saved training" : "training";
    if (sum.committed > 0) return "inclusion of " + counted(sum.committed);
    if (sum.removed > 0)
        return "deletion of " + counted(sum.removed) +
               (sum.removedSeveral ? std::string() : " of " + characterOf(*sum.removedCode));
    if (sum.relabelled > 0)
        return "relabelling of " + counted(sum.relabelled) + " as " + characterOf(sum.relabelledAs);
    if (sum.characters) return "change of the character set";
    if (sum.settings) return "change of the image settings";
    return "finding of " + counted(sum.found);
}

}  // namespace dravik::engine
