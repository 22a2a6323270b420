#include "windows/app/WindowMenus.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "windows/app/ClipboardImages.h"
#include "windows/app/DarkMenus.h"
#include "windows/win32/WinText.h"

namespace dravik::app {
namespace {

constexpr UINT kFirstCommand = 100;

// The keys of the keyboard that type a mark or have its name.
std::vector<WORD> codesOf(std::string_view key) {
    if (key == "+" || key == "=") return {VK_OEM_PLUS, VK_ADD};
    if (key == "-") return {VK_OEM_MINUS, VK_SUBTRACT};
    if (key == ".") return {VK_OEM_PERIOD};
    if (key == "Left") return {VK_LEFT};
    if (key == "Right") return {VK_RIGHT};
    if (key.size() == 2 && key[0] == 'F') return {static_cast<WORD>(VK_F1 + key[1] - '1')};
    if (key.size() != 1) return {};
    const auto code = static_cast<WORD>(static_cast<unsigned char>(key[0]));
    if (key[0] >= '0' && key[0] <= '9') return {code, static_cast<WORD>(VK_NUMPAD0 + key[0] - '0')};
    return {code};
}

void addKeys(std::vector<ACCEL>& table, std::string_view key, WORD command) {
    BYTE shift = FVIRTKEY;
    for (bool more = true; std::exchange(more, false);)
        for (const auto& [name, flag] :
             {std::pair{"Ctrl+", FCONTROL}, std::pair{"Shift+", FSHIFT}, std::pair{"Alt+", FALT}})
            if (key.starts_with(name)) {
                shift = static_cast<BYTE>(shift | flag);
                key.remove_prefix(std::string_view(name).size());
                more = true;
            }
    for (const WORD code : codesOf(key)) {
        table.push_back({shift, code, command});
        // "+" may stand above "=".
        if (code == VK_OEM_PLUS) table.push_back({static_cast<BYTE>(shift | FSHIFT), code, command});
    }
}

std::wstring menuText(const trainer::Action& action) {
    const std::vector<std::string>& keys = action.face().keys;
    return win32::wide(keys.empty() ? action.text() : action.text() + "\t" + keys.front());
}

// Where text is typed, undo takes back typing, and text is pasted there.
bool isForText(const MSG& message) {
    if (message.message != WM_KEYDOWN) return false;
    const bool pastes = message.wParam == 'V' && !clipboardHasImages();
    if (message.wParam != 'Z' && message.wParam != 'Y' && !pastes) return false;
    const auto code = SendMessageW(message.hwnd, WM_GETDLGCODE, 0, 0);
    return (code & DLGC_HASSETSEL) != 0 && (GetWindowLongPtrW(message.hwnd, GWL_STYLE) & ES_READONLY) == 0;
}

}  // namespace

WindowMenus::WindowMenus(const trainer::WindowActions& actions, HWND window) : window_(window) {
    const HMENU bar = CreateMenu();
    std::vector<ACCEL> keys;
    for (const trainer::ActionMenu& menu : actions.menus())
        AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(makeMenu(menu.entries, keys)),
                    win32::wide(menu.caption).c_str());
    SetMenu(window, bar);
    keys_ = CreateAcceleratorTableW(keys.data(), static_cast<int>(keys.size()));
}

HMENU WindowMenus::makeMenu(const trainer::ActionList& entries, std::vector<ACCEL>& keys) {
    const HMENU made = CreatePopupMenu();
    for (trainer::Action* action : entries) {
        if (!action) continue;
        const auto command = static_cast<WORD>(kFirstCommand + actions_.size());
        actions_.push_back(action);
        for (const std::string& key : action->face().keys) addKeys(keys, key, command);
        if (!action->entries().empty()) inside_[action] = makeMenu(action->entries(), keys);
    }
    menus_[made] = &entries;
    fill(made, entries);
    return made;
}

void WindowMenus::fill(HMENU menu, const trainer::ActionList& entries) const {
    while (GetMenuItemCount(menu) > 0) RemoveMenu(menu, 0, MF_BYPOSITION);  // what is inside stays
    for (const trainer::Action* action : entries) {
        if (!action) {
            AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
            continue;
        }
        if (!action->visible()) continue;
        const UINT state =
            (action->enabled() ? MF_ENABLED : MF_GRAYED) | (action->checked() ? MF_CHECKED : MF_UNCHECKED);
        const auto found = inside_.find(action);
        if (found == inside_.end())
            AppendMenuW(menu, MF_STRING | state, commandOf(*action), menuText(*action).c_str());
        else
            AppendMenuW(menu, MF_POPUP | state, reinterpret_cast<UINT_PTR>(found->second),
                        menuText(*action).c_str());
    }
    if (skin_)
        skin_->dressMenu(menu, window_);
    else
        lightenMenu(menu);
}

void WindowMenus::setSkin(const win32::Skin* skin) {
    skin_ = skin;
    const HMENU bar = GetMenu(window_);
    lightenMenu(bar);
    if (skin_) skin_->dressMenu(bar, window_);
    DrawMenuBar(window_);
}

void WindowMenus::perform(WORD command) const {
    if (command >= kFirstCommand && command - kFirstCommand < actions_.size())
        actions_[command - kFirstCommand]->trigger();
}

WORD WindowMenus::commandOf(const trainer::Action& action) const {
    return static_cast<WORD>(kFirstCommand +
                             (std::find(actions_.begin(), actions_.end(), &action) - actions_.begin()));
}

void WindowMenus::showStates(HMENU menu) const {
    if (const auto found = menus_.find(menu); found != menus_.end()) fill(menu, *found->second);
}

bool WindowMenus::translate(MSG& message) const {
    if (isForText(message)) return false;
    return TranslateAcceleratorW(window_, keys_, &message) != 0;
}

}  // namespace dravik::app
