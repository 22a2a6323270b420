// Deleting samples: those of a character, those whose Distance lies in a range, all uncommitted ones, and
// those of the last include; and the marking of the characters that were included.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "screen/context/ScreenContext.h"
#include "screen/inspection/CharOverview.h"
#include "screen/inspection/SampleCounts.h"
#include "screen/inspection/SamplesGrid.h"

namespace dravik::screen {

// Kinds of samples as the deletions are told them.
constexpr std::int16_t kDeleteCommitted = 0;
constexpr std::int16_t kDeleteUncommitted = 1;

class SampleDeletion {
  public:
    SampleDeletion(ScreenContext& context, SampleCounts& counts, CharOverview& overview, SamplesGrid& grid)
        : context_(context), counts_(counts), overview_(overview), grid_(grid) {}

    // Committed samples of one character. The last record is never examined: it stays even when it is one of
    // them. Returns the number deleted, -1 after a failure.
    std::int16_t DeleteChar(std::int16_t kind, const std::string& c);

    // Committed samples of the character whose Distance is in the range, both ends included, with the same
    // bound as DeleteChar. Returns the number deleted.
    std::int16_t DeleteSamplesByDistance(const std::string& Character, double MinDistance,
                                         double MaxDistance);

    // Every uncommitted sample; deleting all committed ones is not offered.
    void DeleteAllSamples(std::int16_t kind);

    // Undo: removes the samples of the last include.
    void DeleteLast();

    // Marks every cell whose character occurs in the text.
    void HighlightIncluded(const std::string& IncludedChars);

    // The font's characters without one of them; nothing after a failure, which must not be taken for an
    // empty set.
    std::optional<tool::CharacterSet> FontWithoutChar(const std::string& c);

    // Another font was loaded: what was included into the one before can no longer be undone.
    void forgetIncludes();

  private:
    template <class Matches>
    void deleteCommitted(const tool::RecordTable& table, Matches matches, std::int16_t& deleted,
                         ActScope& act);
    template <class Deletion>
    void refillingOnFailure(Deletion deletion);

    ScreenContext& context_;
    SampleCounts& counts_;
    CharOverview& overview_;
    SamplesGrid& grid_;
};

}  // namespace dravik::screen
