#include "ui/RowOrder.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>

namespace dravik::ui {
namespace {

constexpr std::size_t kTextBytes = 7;
constexpr unsigned kByteBits = 8;
constexpr unsigned kKeyBits = 64;

}  // namespace

std::uint64_t orderKey(double number) {
    constexpr std::uint64_t kSign = std::uint64_t{1} << 63;
    const auto bits = std::bit_cast<std::uint64_t>(number + 0.0);
    return bits & kSign ? ~bits : bits | kSign;
}

std::uint64_t orderKey(std::string_view text) {
    std::uint64_t key = 0;
    for (std::size_t i = 0; i < kTextBytes; ++i)
        key = key << kByteBits | (i < text.size() ? static_cast<unsigned char>(text[i]) : 0U);
    return key << kByteBits | std::min(text.size(), kTextBytes + 1);
}

bool isCutKey(std::uint64_t key) {
    return (key & 0xFF) > kTextBytes;
}

void sortByKey(std::vector<KeyedRow>& rows) {
    if (rows.empty()) return;
    std::uint64_t differing = 0;
    for (const KeyedRow& row : rows) differing |= row.key ^ rows.front().key;
    std::vector<KeyedRow> sorted(rows.size());
    for (unsigned shift = 0; shift < kKeyBits; shift += kByteBits) {
        if ((differing >> shift & 0xFF) == 0) continue;
        std::array<std::size_t, 256> places{};
        for (const KeyedRow& row : rows) ++places[row.key >> shift & 0xFF];
        std::size_t next = 0;
        for (std::size_t& place : places) {
            const std::size_t count = place;
            place = next;
            next += count;
        }
        for (const KeyedRow& row : rows) sorted[places[row.key >> shift & 0xFF]++] = row;
        rows.swap(sorted);
    }
}

}  // namespace dravik::ui
