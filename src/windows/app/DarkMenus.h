// Menus in dark colours: Windows draws none by itself, so their items are drawn here, with marks and access
// keys.
#pragma once

namespace dravik::app {

// The items that the menu has now, but not those of menus inside of it. The owner's messages for drawing them
// are answered from now on.
void darkenMenu(HMENU menu, HWND owner);
// The system draws its items again.
void lightenMenu(HMENU menu);

}  // namespace dravik::app
