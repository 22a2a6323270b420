// Texts of windows.
#pragma once

#include <string>
#include <string_view>

#include "base/Utf.h"

namespace dravik::win32 {

using dravik::utf8;
using dravik::wide;

std::wstring windowText(HWND window);

// UTF-16 position of the character with the given index; the end when there are fewer characters.
std::size_t positionOfCharacter(std::wstring_view text, int index);

// The text as it is drawn, without the "&" that marks an access key ("&&" is one "&"), and the key in upper
// case, 0 without one.
std::wstring withoutMnemonic(std::wstring_view caption);
wchar_t mnemonicOf(std::wstring_view caption);

// Line breaks of the models (single carriage returns) as Windows wants them.
std::wstring withLineBreaks(std::wstring_view text);

// What the last failed call of the system said, in the user's language.
std::string lastErrorText(DWORD error);

}  // namespace dravik::win32
