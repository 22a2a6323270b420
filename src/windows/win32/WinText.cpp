#include "windows/win32/WinText.h"

#include "windows/win32/Guard.h"

namespace dravik::win32 {

void tellDebugger(const Failure& failure) noexcept {
    try {
        const std::string text =
            "Unhandled failure " + std::to_string(failure.number()) + ": " + failure.description() + "\n";
        OutputDebugStringW(wide(text).c_str());
    } catch (...) {
        OutputDebugStringA("Unhandled failure\n");
    }
}

std::wstring windowText(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

std::size_t positionOfCharacter(std::wstring_view text, int index) {
    std::size_t position = 0;
    for (; index > 0 && position < text.size(); --index)
        position += IS_HIGH_SURROGATE(text[position]) && position + 1 < text.size() ? 2 : 1;
    return position;
}

std::wstring withoutMnemonic(std::wstring_view caption) {
    std::wstring result;
    for (std::size_t i = 0; i < caption.size(); ++i) {
        if (caption[i] == L'&' && ++i == caption.size()) break;
        result += caption[i];
    }
    return result;
}

wchar_t mnemonicOf(std::wstring_view caption) {
    for (std::size_t i = 0; i + 1 < caption.size(); ++i) {
        if (caption[i] != L'&') continue;
        if (caption[i + 1] != L'&') {
            wchar_t key = caption[i + 1];
            CharUpperBuffW(&key, 1);
            return key;
        }
        ++i;
    }
    return 0;
}

std::wstring withLineBreaks(std::wstring_view text) {
    std::wstring result;
    for (const wchar_t unit : text) {
        result += unit;
        if (unit == L'\r') result += L'\n';
    }
    return result;
}

std::string lastErrorText(DWORD error) {
    wchar_t text[512];
    DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error,
                                  0, text, static_cast<DWORD>(std::size(text)), nullptr);
    while (length > 0 && (text[length - 1] == L'\n' || text[length - 1] == L'\r' || text[length - 1] == L' '))
        --length;
    return length > 0 ? utf8({text, length}) : "error " + std::to_string(error);
}

}  // namespace dravik::win32
