#include "windows/com/ComText.h"

#include <limits>
#include <new>

namespace dravik::com {

std::string toUtf8(BSTR text) {
    return text ? utf8({text, SysStringLen(text)}) : std::string();
}

std::string toUtf8(const wchar_t* text) {
    return text ? utf8(text) : std::string();
}

Bstr::Bstr(std::string_view utf8) : Bstr(std::wstring_view(wide(utf8))) {}

Bstr::Bstr(std::wstring_view wide) {
    if (wide.size() <= std::numeric_limits<UINT>::max())
        text_ = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
    if (!text_) throw std::bad_alloc();
}

}  // namespace dravik::com
