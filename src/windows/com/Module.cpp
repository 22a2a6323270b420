#include "windows/com/Module.h"

#include "windows/com/Boundary.h"

namespace dravik::com {

std::atomic<long>& moduleObjects() noexcept {
    static std::atomic<long> objects = 0;
    return objects;
}

HMODULE thisModule() noexcept {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<LPCWSTR>(&thisModule), &module);
    return module;
}

std::wstring modulePath() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(thisModule(), path.data(), static_cast<DWORD>(path.size()));
        if (length == 0) throw failureOf(HRESULT_FROM_WIN32(GetLastError()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

ComPtr<ITypeLib> typeLibrary(int resource) {
    ComPtr<ITypeLib> library;
    check(LoadTypeLibEx((modulePath() + L"\\" + std::to_wstring(resource)).c_str(), REGKIND_NONE,
                        library.put()));
    return library;
}

ComPtr<ITypeInfo> typeInfoOf(REFGUID identifier) {
    for (int resource = 1; resource <= kTypeLibraries; ++resource) {
        ComPtr<ITypeInfo> info;
        if (SUCCEEDED(typeLibrary(resource)->GetTypeInfoOfGuid(identifier, info.put()))) return info;
    }
    throw failureOf(TYPE_E_ELEMENTNOTFOUND);
}

}  // namespace dravik::com
