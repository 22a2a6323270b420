#include "windows/com/ComText.h"

#include <limits>
#include <new>
#include <stdexcept>

namespace dravik::com {
namespace {

int length(std::size_t size) {
    if (size > static_cast<std::size_t>(std::numeric_limits<int>::max()))
        throw std::length_error("text too long");
    return static_cast<int>(size);
}

}  // namespace

std::wstring toWide(std::string_view utf8) {
    const int size = length(utf8.size());
    if (size == 0) return {};
    std::wstring wide(
        static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, nullptr, 0)), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), size, wide.data(), length(wide.size()));
    return wide;
}

std::string toUtf8(std::wstring_view wide) {
    const int size = length(wide.size());
    if (size == 0) return {};
    std::string utf8(static_cast<std::size_t>(
                         WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, nullptr, 0, nullptr, nullptr)),
                     '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, utf8.data(), length(utf8.size()), nullptr, nullptr);
    return utf8;
}

std::string toUtf8(BSTR text) {
    return text ? toUtf8(std::wstring_view(text, SysStringLen(text))) : std::string();
}

std::string toUtf8(const wchar_t* text) {
    return text ? toUtf8(std::wstring_view(text)) : std::string();
}

Bstr::Bstr(std::string_view utf8) : Bstr(std::wstring_view(toWide(utf8))) {}

Bstr::Bstr(std::wstring_view wide)
    : text_(SysAllocStringLen(wide.data(), static_cast<UINT>(length(wide.size())))) {
    if (!text_) throw std::bad_alloc();
}

}  // namespace dravik::com
