// The keys that move through what stands in rows and columns, the same in every window system.
#pragma once

#include <array>
#include <optional>

namespace dravik::ui {

enum class KeyMove { Left, Right, Up, Down, PageUp, PageDown, Home, End };

// Of a key code as the widgets' events carry it; nothing for keys that move nothing.
constexpr std::optional<KeyMove> keyMove(int key) {
    constexpr int kFirst = 33;
    constexpr std::array kMoves = {KeyMove::PageUp, KeyMove::PageDown, KeyMove::End,   KeyMove::Home,
                                   KeyMove::Left,   KeyMove::Up,       KeyMove::Right, KeyMove::Down};
    if (key < kFirst || key >= kFirst + static_cast<int>(kMoves.size())) return std::nullopt;
    return kMoves[static_cast<std::size_t>(key - kFirst)];
}

}  // namespace dravik::ui
