#include "windows/com/support/RegistryDump.h"

#include <vector>

#include "windows/com/ComText.h"

namespace dravik::test {

using namespace com;
namespace {

void dump(HKEY above, const std::wstring& name, const std::string& path, std::string& text) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(above, name.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return;
    const std::string own = path + "\\" + utf8(name);
    text += own + "\n";
    std::vector<wchar_t> buffer(1 << 14);
    std::vector<BYTE> data(1 << 16);
    for (DWORD index = 0;; ++index) {
        auto length = static_cast<DWORD>(buffer.size());
        auto size = static_cast<DWORD>(data.size());
        DWORD type = 0;
        const LSTATUS status =
            RegEnumValueW(key, index, buffer.data(), &length, nullptr, &type, data.data(), &size);
        if (status == ERROR_MORE_DATA) continue;
        if (status != ERROR_SUCCESS) break;
        text += own + " " + utf8({buffer.data(), length}) + " " + std::to_string(type) + " " +
                std::string(data.begin(), data.begin() + size) + "\n";
    }
    for (DWORD index = 0;; ++index) {
        auto length = static_cast<DWORD>(buffer.size());
        if (RegEnumKeyExW(key, index, buffer.data(), &length, nullptr, nullptr, nullptr, nullptr) !=
            ERROR_SUCCESS)
            break;
        dump(key, std::wstring(buffer.data(), length), own, text);
    }
    RegCloseKey(key);
}

}  // namespace

std::string registryDump(const std::set<std::wstring>& keys) {
    std::string text;
    for (const std::wstring& key : keys) {
        const std::wstring path = key.empty() ? L"Software\\Classes" : L"Software\\Classes\\" + key;
        dump(HKEY_LOCAL_MACHINE, path, "machine", text);
        dump(HKEY_CURRENT_USER, path, "user", text);
    }
    return text;
}

}  // namespace dravik::test
