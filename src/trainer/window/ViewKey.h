// A key that the operator presses in the view of the image.
#pragma once

namespace dravik::trainer {

struct ViewKey {
    enum class Name { Other, Left, Right, Up, Down, Home, End, Tab, Enter, Escape, Delete, Menu };

    Name name = Name::Other;
    char letter = 0;  // of a key that types one, as a capital
    bool shift = false;
    bool ctrl = false;

    bool isArrow() const noexcept { return name >= Name::Left && name <= Name::Down; }
    // Of an arrow: -1, 0 or 1 to the right and down.
    int across() const noexcept { return name == Name::Left ? -1 : name == Name::Right ? 1 : 0; }
    int down() const noexcept { return name == Name::Up ? -1 : name == Name::Down ? 1 : 0; }
};

}  // namespace dravik::trainer
