// Orders rows by a key of eight bytes each, stably and in a time that grows with the number of rows alone:
// byte by byte from the last to the first, leaving out the bytes in which all keys agree.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace dravik::ui {

struct KeyedRow {
    std::uint64_t key = 0;
    std::int32_t row = 0;
};

// Keys that stand in the order of the numbers, 0 and -0 being the same; undefined numbers come first or last.
std::uint64_t orderKey(double number);

// Keys that stand in the order of the texts, byte by byte, a text before those that it begins. Texts of eight
// bytes or more that agree in the first seven have the same key, and isCutKey() tells so.
std::uint64_t orderKey(std::string_view text);
bool isCutKey(std::uint64_t key);

// Ties keep their order.
void sortByKey(std::vector<KeyedRow>& rows);

}  // namespace dravik::ui
