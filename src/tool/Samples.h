// How samples are numbered and which fields a query asks for; shared by everything that talks to a font tool.
#pragma once

#include <array>
#include <cstdint>

namespace dravik::tool {

// Kinds of records. A sample's identifier is kind x 100000 + index, the index counted from 0 in the tool's
// order within the kind.
enum class SampleKind : std::int32_t { Trained = 1, Uncommitted = 2, Committed = 3 };

constexpr std::int32_t kKindFactor = 100000;

constexpr std::int32_t sampleIdentifier(SampleKind kind, std::int32_t index) {
    return static_cast<std::int32_t>(kind) * kKindFactor + index;
}

// Selectors of every record of a kind.
constexpr std::int32_t kAllTrained = 199999;
constexpr std::int32_t kAllUncommitted = 299999;
constexpr std::int32_t kAllCommitted = 399999;

// The most samples of a kind that identifiers can name beside the selector.
constexpr std::int32_t kMostSamples = 99999;

// The field lists that the screen sends: for samples (character code, Distance, two more, features) and for
// the font's character records (character code, trained count, one more, features).
constexpr std::array<std::int16_t, 5> kSampleFields = {1, 2, 3, 5, 6};
constexpr std::array<std::int16_t, 4> kCharacterFields = {1, 4, 5, 6};

constexpr int kFeatureCount = 49;

}  // namespace dravik::tool
