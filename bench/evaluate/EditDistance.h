// How far a reading is from the text.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

namespace dravik {

// Characters to insert, remove or replace to make one text of the other.
inline int edits(const std::vector<std::string>& from, const std::vector<std::string>& to) {
    std::vector<int> row(to.size() + 1);
    for (std::size_t j = 0; j < row.size(); ++j) row[j] = static_cast<int>(j);
    for (std::size_t i = 0; i < from.size(); ++i) {
        int before = row[0]++;
        for (std::size_t j = 0; j < to.size(); ++j) {
            const int replaced = before + (from[i] == to[j] ? 0 : 1);
            before = row[j + 1];
            row[j + 1] = std::min({row[j] + 1, before + 1, replaced});
        }
    }
    return row.back();
}

}  // namespace dravik
