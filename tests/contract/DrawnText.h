// Part images drawn from a 5 x 7 dot pattern, for tests that need characters but no corpus.
#pragma once

#include <algorithm>
#include <array>
#include <map>
#include <string>
#include <vector>

#include "engine/image/GreyImage.h"

namespace dravik {

using namespace engine;

// Rows from the top, one bit a column, the leftmost column being bit 4.
inline const std::map<char, std::array<int, 9>>& drawnPatterns() {
    static const std::map<char, std::array<int, 9>> patterns = {
        {'0', {14, 17, 17, 17, 17, 17, 14}}, {'1', {4, 12, 4, 4, 4, 4, 14}},
        {'2', {14, 17, 1, 2, 4, 8, 31}},     {'3', {31, 1, 2, 6, 1, 17, 14}},
        {'4', {2, 6, 10, 18, 31, 2, 2}},     {'5', {31, 16, 30, 1, 1, 17, 14}},
        {'6', {6, 8, 16, 30, 17, 17, 14}},   {'7', {31, 1, 2, 4, 8, 8, 8}},
        {'8', {14, 17, 17, 14, 17, 17, 14}}, {'9', {14, 17, 17, 15, 1, 2, 12}},
        {'A', {14, 17, 17, 31, 17, 17, 17}}, {'B', {30, 17, 17, 30, 17, 17, 30}},
        {'C', {14, 17, 16, 16, 16, 17, 14}}, {'E', {31, 16, 16, 30, 16, 16, 31}},
        {'H', {17, 17, 17, 31, 17, 17, 17}}, {'L', {16, 16, 16, 16, 16, 16, 31}},
        {'O', {14, 17, 17, 17, 17, 17, 14}}, {'T', {31, 4, 4, 4, 4, 4, 4}},
        {'i', {4, 0, 12, 4, 4, 4, 14}},      {'j', {2, 0, 6, 2, 2, 2, 2, 18, 12}},
        {'o', {0, 0, 14, 17, 17, 17, 14}},   {':', {0, 12, 12, 0, 0, 12, 12}},
        {';', {0, 12, 12, 0, 12, 4, 8}},     {'=', {0, 0, 31, 0, 31, 0, 0}},
        {'"', {10, 10, 10, 0, 0, 0, 0}},     {'\'', {4, 4, 4, 0, 0, 0, 0}},
        {',', {0, 0, 0, 0, 12, 4, 8}},       {'.', {0, 0, 0, 0, 0, 12, 12}},
        {'-', {0, 0, 0, 31, 0, 0, 0}},       {'_', {0, 0, 0, 0, 0, 0, 0, 31}},
    };
    return patterns;
}

struct Drawing {
    int scale = 4;    // pixels of a dot's pitch
    int dot = 4;      // pixels of a dot, smaller than the pitch for dots that do not touch
    int paper = 220;  // grey levels
    int print = 40;
    double slope = 0;  // fall per pixel to the right
    int margin = 24;
};

// The lines of text, every character six dots wide and every line eleven high; blanks leave a place free.
inline GreyImage drawn(const std::vector<std::string>& lines, const Drawing& how = {}) {
    std::size_t longest = 0;
    for (const std::string& line : lines) longest = std::max(longest, line.size());
    const int width = 2 * how.margin + static_cast<int>(longest) * 6 * how.scale;
    const int fall = static_cast<int>(how.slope * width);
    const int height = 2 * how.margin + static_cast<int>(lines.size()) * 11 * how.scale + std::abs(fall);
    GreyImage image(width, height, static_cast<std::uint8_t>(how.paper));
    for (std::size_t l = 0; l < lines.size(); ++l)
        for (std::size_t c = 0; c < lines[l].size(); ++c) {
            const auto pattern = drawnPatterns().find(lines[l][c]);
            if (pattern == drawnPatterns().end()) continue;
            for (int row = 0; row < 9; ++row)
                for (int column = 0; column < 5; ++column) {
                    if (!(pattern->second[static_cast<std::size_t>(row)] >> (4 - column) & 1)) continue;
                    const int left = how.margin + (static_cast<int>(c) * 6 + column) * how.scale;
                    const int top =
                        how.margin + (static_cast<int>(l) * 11 + row) * how.scale + std::max(0, -fall);
                    for (int y = 0; y < how.dot; ++y)
                        for (int x = 0; x < how.dot; ++x)
                            image(left + x, top + y + static_cast<int>(how.slope * (left + x))) =
                                static_cast<std::uint8_t>(how.print);
                }
        }
    return image;
}

}  // namespace dravik
