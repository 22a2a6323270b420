// What can be done to a font: each change says what was before and what is after, so that it can be made,
// taken back and made again, in memory and from a journal. Nothing else changes a font's state.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include "engine/font/FontState.h"
#include "tool/Samples.h"

namespace dravik::engine {

struct AddUncommitted {
    std::vector<Sample> samples;  // with their serial numbers
};
// All uncommitted samples.
struct CommitUncommitted {
    std::uint32_t count = 0;
};
struct RemoveSample {
    tool::SampleKind kind = tool::SampleKind::Committed;
    std::uint32_t place = 0;
    MeasuredSample removed;
};
// Committed samples are of another character. Their serial numbers ascend.
struct RelabelSamples {
    std::vector<std::uint64_t> serials;
    std::vector<std::int32_t> codesBefore;
    std::vector<double> distancesBefore;
    std::int32_t codeAfter = 0;
};
struct SetCharacters {
    tool::CharacterSet before;
    tool::CharacterSet after;
};
// How images are looked at.
struct SetSettings {
    SegmentationSettings before;
    SegmentationSettings after;
};
// By a run, or back to an earlier one. A run has measured the samples of these serial numbers, which ascend.
struct SetTraining {
    TrainingPtr before;
    TrainingPtr after;
    std::vector<std::uint64_t> serials;
    std::vector<double> distancesBefore;
    std::vector<double> distancesAfter;
};
// Another font in its place. There are no uncommitted samples then.
struct ReplaceFont {
    std::shared_ptr<const FontRecord> before;
    std::shared_ptr<const FontRecord> after;
};

using FontChange = std::variant<AddUncommitted, CommitUncommitted, RemoveSample, RelabelSamples,
                                SetCharacters, SetSettings, SetTraining, ReplaceFont>;

// Raise Device I/O error (57) when the change does not fit the state; the state is then as it was, and so
// when memory ends.
void applyChange(const FontChange& change, FontState& state);
void revertChange(const FontChange& change, FontState& state);

// True when the changes, one after the other, leave a font as it was: what was found was thrown away again.
bool changesNothing(std::span<const FontChange> changes);
// The same but for the training.
bool changesTrainingOnly(std::span<const FontChange> changes);
// The same but for uncommitted samples, which may have come.
bool changesUncommittedOnly(std::span<const FontChange> changes);
// What the changes did, in words to follow "Undo ": "deletion of 3 samples of B".
std::string describe(std::span<const FontChange> changes);

}  // namespace dravik::engine
