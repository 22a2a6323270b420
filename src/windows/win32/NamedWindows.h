// Every control's window carries its widget's name as a window property, for programs and tests that look
// controls up by name, whatever module they live in.
#pragma once

#include <string>

namespace dravik::win32 {

// The name of that property, and the window inside of another one that carries it; nothing when there is
// none.
std::wstring nameMark(const std::string& name);
HWND findWindowNamed(HWND inside, const std::string& name);
// Where such a control is: a cell is a part of a window, numbered from 1; 0 is the whole window.
struct NamedPart {
    HWND window = nullptr;
    int part = 0;
};
NamedPart findNamed(HWND inside, const std::string& name);
void focusNamed(HWND inside, const std::string& name);
// The message that asks a window for the number of its part with the name that wParam is the global atom of.
UINT partMessage();

}  // namespace dravik::win32
