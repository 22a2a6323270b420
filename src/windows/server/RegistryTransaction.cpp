#include "windows/server/RegistryTransaction.h"

#include "windows/com/Boundary.h"

namespace dravik::server {

void checkRegistry(LSTATUS status) {
    if (status != ERROR_SUCCESS) throw com::failureOf(HRESULT_FROM_WIN32(static_cast<DWORD>(status)));
}

namespace {

bool opens(HKEY root, const std::wstring& path, REGSAM access, RegistryKey& key) {
    const LSTATUS status = RegOpenKeyExW(root, path.c_str(), 0, access, key.put());
    if (status == ERROR_FILE_NOT_FOUND || status == ERROR_PATH_NOT_FOUND) return false;
    checkRegistry(status);
    return true;
}

std::wstring above(const std::wstring& path) {
    const std::size_t separator = path.rfind(L'\\');
    return separator == std::wstring::npos ? std::wstring() : path.substr(0, separator);
}

}  // namespace

RegistryTransaction::~RegistryTransaction() {
    for (auto undo = undo_.rbegin(); undo != undo_.rend(); ++undo) takeBack(*undo);
}

void RegistryTransaction::takeBack(const Undo& undo) const noexcept {
    RegistryKey key;
    switch (undo.kind) {
        case Undo::Kind::DeleteKey:
            RegDeleteKeyW(root_, undo.key.c_str());
            return;
        case Undo::Kind::MakeKey:
            RegCreateKeyExW(root_, undo.key.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, key.put(), nullptr);
            return;
        case Undo::Kind::Value:
            if (RegOpenKeyExW(root_, undo.key.c_str(), 0, KEY_WRITE, key.put()) != ERROR_SUCCESS) return;
            if (undo.value.exists)
                RegSetValueExW(key.get(), undo.name.c_str(), 0, undo.value.type, undo.value.data.data(),
                               static_cast<DWORD>(undo.value.data.size()));
            else
                RegDeleteValueW(key.get(), undo.name.c_str());
    }
}

RegistryTransaction::Value RegistryTransaction::valueOf(HKEY key, const std::wstring& name) const {
    Value value;
    DWORD size = 0;
    if (RegQueryValueExW(key, name.c_str(), nullptr, &value.type, nullptr, &size) != ERROR_SUCCESS)
        return value;
    value.data.resize(size);
    checkRegistry(RegQueryValueExW(key, name.c_str(), nullptr, &value.type, value.data.data(), &size));
    value.data.resize(size);
    value.exists = true;
    return value;
}

void RegistryTransaction::make(const std::wstring& path) {
    // One level at a time, so that each that is new can be taken back.
    for (std::size_t end = 0; end != std::wstring::npos;) {
        end = path.find(L'\\', end + 1);
        const std::wstring level = path.substr(0, end);
        undo_.reserve(undo_.size() + 1);
        RegistryKey key;
        DWORD disposition = 0;
        checkRegistry(RegCreateKeyExW(root_, level.c_str(), 0, nullptr, 0, KEY_READ | KEY_WRITE, nullptr,
                                      key.put(), &disposition));
        if (disposition == REG_CREATED_NEW_KEY) undo_.push_back({Undo::Kind::DeleteKey, level, {}, {}});
    }
}

void RegistryTransaction::set(const std::wstring& path, const std::wstring& name, const std::wstring& text) {
    make(path);
    RegistryKey key;
    if (!opens(root_, path, KEY_READ | KEY_WRITE, key))
        throw com::failureOf(HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND));
    undo_.push_back({Undo::Kind::Value, path, name, valueOf(key.get(), name)});
    checkRegistry(RegSetValueExW(key.get(), name.c_str(), 0, REG_SZ,
                                 reinterpret_cast<const BYTE*>(text.c_str()),
                                 static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))));
}

void RegistryTransaction::remove(const std::wstring& path, const std::wstring& name) {
    RegistryKey key;
    if (!opens(root_, path, KEY_READ, key)) return;
    Value before = valueOf(key.get(), name);
    if (!before.exists) return;
    RegistryKey writable;
    if (!opens(root_, path, KEY_READ | KEY_WRITE, writable)) return;
    undo_.push_back({Undo::Kind::Value, path, name, std::move(before)});
    checkRegistry(RegDeleteValueW(writable.get(), name.c_str()));
}

void RegistryTransaction::removeIfEmpty(const std::wstring& path, const std::wstring& top) {
    for (std::wstring level = path; level.size() > top.size(); level = above(level)) {
        {
            RegistryKey key;
            if (!opens(root_, level, KEY_READ, key)) continue;
            DWORD keys = 0, values = 0;
            checkRegistry(RegQueryInfoKeyW(key.get(), nullptr, nullptr, nullptr, &keys, nullptr, nullptr,
                                           &values, nullptr, nullptr, nullptr, nullptr));
            if (keys > 0 || values > 0) return;
        }
        undo_.push_back({Undo::Kind::MakeKey, level, {}, {}});
        checkRegistry(RegDeleteKeyW(root_, level.c_str()));
    }
}

bool hasKey(HKEY root, const std::wstring& path) {
    RegistryKey key;
    return opens(root, path, KEY_READ, key);
}

std::wstring registryText(HKEY root, const std::wstring& path, const std::wstring& name) {
    RegistryKey key;
    if (!opens(root, path, KEY_READ, key)) return {};
    DWORD size = 0, type = 0;
    if (RegQueryValueExW(key.get(), name.c_str(), nullptr, &type, nullptr, &size) != ERROR_SUCCESS ||
        type != REG_SZ)
        return {};
    std::wstring text(size / sizeof(wchar_t), L'\0');
    checkRegistry(RegQueryValueExW(key.get(), name.c_str(), nullptr, &type,
                                   reinterpret_cast<BYTE*>(text.data()), &size));
    text.resize(size / sizeof(wchar_t));
    while (!text.empty() && text.back() == L'\0') text.pop_back();
    return text;
}

}  // namespace dravik::server
