// RegistryRows DLL SOURCE: has a COM server register itself into a key that is thrown away, and prints the
// entries as RegistryValue elements for an installer's component. Where the DLL's own path stands the
// installer puts that of its file SOURCE.
#include <windows.h>

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "base/Utf.h"

namespace {

using dravik::utf8;

constexpr wchar_t kScratch[] = L"Software\\DravikRegistryRows";

std::string escaped(std::wstring_view wide) {
    std::string text;
    for (const char c : utf8(wide)) {
        switch (c) {
            case '&':
                text += "&amp;";
                break;
            case '<':
                text += "&lt;";
                break;
            case '"':
                text += "&quot;";
                break;
            default:
                text += c;
        }
    }
    return text;
}

class Rows {
  public:
    Rows(std::wstring dll, std::wstring source) : dll_(std::move(dll)), source_(std::move(source)) {
        folder_ = dll_.substr(0, dll_.find_last_of(L'\\'));
    }

    void print(HKEY above, const std::wstring& name, const std::wstring& path) {
        HKEY key = nullptr;
        if (RegOpenKeyExW(above, name.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return;
        printValues(key, path);
        std::vector<wchar_t> below(256);
        for (DWORD index = 0;; ++index) {
            auto length = static_cast<DWORD>(below.size());
            if (RegEnumKeyExW(key, index, below.data(), &length, nullptr, nullptr, nullptr, nullptr) !=
                ERROR_SUCCESS)
                break;
            const std::wstring child(below.data(), length);
            print(key, child, path.empty() ? child : path + L"\\" + child);
        }
        RegCloseKey(key);
    }

  private:
    void printValues(HKEY key, const std::wstring& path) {
        std::vector<wchar_t> name(1024), text(1 << 14);
        for (DWORD index = 0;; ++index) {
            auto length = static_cast<DWORD>(name.size());
            auto size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
            DWORD type = 0;
            if (RegEnumValueW(key, index, name.data(), &length, nullptr, &type,
                              reinterpret_cast<BYTE*>(text.data()), &size) != ERROR_SUCCESS)
                break;
            std::wstring value(text.data(), size / sizeof(wchar_t));
            while (!value.empty() && value.back() == L'\0') value.pop_back();
            std::printf("<RegistryValue Root=\"HKLM\" Key=\"%s\"", escaped(path).c_str());
            if (length > 0) std::printf(" Name=\"%s\"", escaped({name.data(), length}).c_str());
            std::printf(" Type=\"string\" Value=\"%s\"/>\n", escaped(placed(value)).c_str());
        }
    }

    // The value with the installed file's place in it.
    std::wstring placed(const std::wstring& value) const {
        if (value.starts_with(dll_)) return L"[#" + source_ + L"]" + value.substr(dll_.size());
        if (value == folder_) return L"[INSTALLDIR]";
        return value;
    }

    std::wstring dll_;
    std::wstring folder_;
    std::wstring source_;
};

}  // namespace

int wmain(int count, wchar_t** arguments) {
    if (count != 3) {
        std::fprintf(stderr, "usage: RegistryRows DLL SOURCE\n");
        return 2;
    }
    std::vector<wchar_t> full(1 << 12);
    GetFullPathNameW(arguments[1], static_cast<DWORD>(full.size()), full.data(), nullptr);
    const HMODULE dll = LoadLibraryW(full.data());
    const auto registerServer = dll ? reinterpret_cast<HRESULT(__stdcall*)()>(
                                          reinterpret_cast<void*>(GetProcAddress(dll, "DllRegisterServer")))
                                    : nullptr;
    if (!registerServer) {
        std::fprintf(stderr, "%s: no COM server\n", utf8(arguments[1]).c_str());
        return 1;
    }
    HKEY scratch = nullptr;
    if (RegCreateKeyExW(HKEY_CURRENT_USER, kScratch, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &scratch,
                        nullptr) != ERROR_SUCCESS)
        return 1;
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, scratch);
    const HRESULT result = registerServer();
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
    if (SUCCEEDED(result)) Rows(full.data(), arguments[2]).print(scratch, L"", L"");
    RegCloseKey(scratch);
    RegDeleteTreeW(HKEY_CURRENT_USER, kScratch);
    if (FAILED(result)) {
        std::fprintf(stderr, "%s: registration failed, 0x%08lX\n", utf8(arguments[1]).c_str(),
                     static_cast<unsigned long>(result));
        return 1;
    }
    return 0;
}
