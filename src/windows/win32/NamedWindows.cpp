#include "windows/win32/NamedWindows.h"

#include "windows/win32/Accessible.h"
#include "windows/win32/WinText.h"

namespace dravik::win32 {

std::wstring nameMark(const std::string& name) {
    return L"Dravik." + wide(name);
}

namespace {

struct Search {
    std::wstring mark;
    ATOM atom;
    NamedPart found;
};

// A lambda would not have the calling convention of 32-bit Windows.
BOOL CALLBACK isNamed(HWND window, LPARAM search) noexcept {
    auto& wanted = *reinterpret_cast<Search*>(search);
    if (GetPropW(window, wanted.mark.c_str()))
        wanted.found = {window, 0};
    else if (const auto part = static_cast<int>(SendMessageW(window, partMessage(), wanted.atom, 0));
             part > 0)
        wanted.found = {window, part};
    return wanted.found.window == nullptr;
}

}  // namespace

UINT partMessage() {
    static const UINT number = RegisterWindowMessageW(L"Dravik.PartNamed");
    return number;
}

NamedPart findNamed(HWND inside, const std::string& name) {
    Search search{nameMark(name), 0, {}};
    search.atom = GlobalAddAtomW(search.mark.c_str());
    EnumChildWindows(inside, isNamed, reinterpret_cast<LPARAM>(&search));
    GlobalDeleteAtom(search.atom);
    return search.found;
}

void focusNamed(HWND inside, const std::string& name) {
    const NamedPart found = findNamed(inside, name);
    IAccessible* object = nullptr;
    if (found.part == 0 || accessibleObject(found.window, OBJID_CLIENT, __uuidof(IAccessible),
                                            reinterpret_cast<void**>(&object)) != S_OK) {
        SetFocus(found.window);
        return;
    }
    VARIANT part{};
    part.vt = VT_I4;
    part.lVal = found.part;
    object->accSelect(SELFLAG_TAKEFOCUS, part);
    object->Release();
}

HWND findWindowNamed(HWND inside, const std::string& name) {
    return findNamed(inside, name).window;
}

}  // namespace dravik::win32
