// The record tables that queries return: character records and samples, without copying the samples.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "engine/font/FontFile.h"
#include "engine/font/SampleStore.h"
#include "tool/RecordTable.h"

namespace dravik::engine {

// What a character record shows.
struct CharacterRecord {
    std::int32_t code = 0;
    std::int32_t trained = 0;  // samples that the character was trained with
    SampleInputs inputs{};
};

// The records that the selectors name, in the selectors' order, nothing when there are none. Column 0 holds
// the record's identifier; the others follow `fields`: 1 code, 2 Distance, 3 height, 4 trained count, 5
// offset, 6 the features. Raises Invalid procedure call (5) for another field.
tool::RecordTablePtr sampleTable(std::span<const std::int32_t> selectors,
                                 std::span<const std::int16_t> fields,
                                 std::vector<CharacterRecord> characters, SampleColumnsPtr uncommitted,
                                 SampleColumnsPtr committed);

}  // namespace dravik::engine
