#include "windows/win32/SystemFunction.h"

#include <array>
#include <string>

namespace dravik::win32 {

void* systemFunction(const wchar_t* library, const char* name) noexcept {
    std::array<wchar_t, MAX_PATH> folder{};
    const UINT length = GetSystemDirectoryW(folder.data(), static_cast<UINT>(folder.size()));
    if (length == 0 || length >= folder.size()) return nullptr;
    const std::wstring path = std::wstring(folder.data()) + L'\\' + library;
    const HMODULE module = LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    return module ? reinterpret_cast<void*>(GetProcAddress(module, name)) : nullptr;
}

}  // namespace dravik::win32
