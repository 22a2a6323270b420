// How far a reading is from the text on the part.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "base/Text.h"

namespace dravik::test {

// Characters that must be inserted, removed or replaced to turn one text into the other.
inline std::size_t differences(const std::vector<std::string>& one, const std::vector<std::string>& other) {
    std::vector<std::size_t> row(other.size() + 1);
    for (std::size_t j = 0; j < row.size(); ++j) row[j] = j;
    for (std::size_t i = 0; i < one.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < other.size(); ++j) {
            const auto replaced = diagonal + (one[i] == other[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, row[j + 1] + 1});
        }
    }
    return row.back();
}

inline std::size_t differences(const std::string& one, const std::string& other) {
    return differences(characters(one), characters(other));
}

}  // namespace dravik::test
