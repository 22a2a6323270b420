#include "windows/app/Settings.h"

namespace dravik::app {

std::vector<BYTE> Settings::bytes(const wchar_t* name) const {
    DWORD size = 0;
    if (key_.empty() ||
        RegGetValueW(HKEY_CURRENT_USER, key_.c_str(), name, RRF_RT_ANY, nullptr, nullptr, &size) != 0)
        return {};
    std::vector<BYTE> value(size);
    if (RegGetValueW(HKEY_CURRENT_USER, key_.c_str(), name, RRF_RT_ANY, nullptr, value.data(), &size) != 0)
        return {};
    value.resize(size);
    return value;
}

std::optional<DWORD> Settings::number(const wchar_t* name) const {
    DWORD value = 0;
    DWORD size = sizeof value;
    if (key_.empty() ||
        RegGetValueW(HKEY_CURRENT_USER, key_.c_str(), name, RRF_RT_REG_DWORD, nullptr, &value, &size) != 0)
        return std::nullopt;
    return value;
}

std::wstring Settings::text(const wchar_t* name) const {
    const std::vector<BYTE> value = bytes(name);
    std::wstring result(reinterpret_cast<const wchar_t*>(value.data()), value.size() / sizeof(wchar_t));
    while (!result.empty() && result.back() == L'\0') result.pop_back();
    return result;
}

void Settings::set(const wchar_t* name, DWORD type, const void* value, std::size_t size) const noexcept {
    if (!key_.empty())
        RegSetKeyValueW(HKEY_CURRENT_USER, key_.c_str(), name, type, value, static_cast<DWORD>(size));
}

void Settings::setNumber(const wchar_t* name, DWORD value) const noexcept {
    set(name, REG_DWORD, &value, sizeof value);
}

void Settings::setText(const wchar_t* name, const std::wstring& value) const noexcept {
    set(name, REG_SZ, value.c_str(), (value.size() + 1) * sizeof(wchar_t));
}

void Settings::setBytes(const wchar_t* name, const void* value, std::size_t size) const noexcept {
    set(name, REG_BINARY, value, size);
}

}  // namespace dravik::app
