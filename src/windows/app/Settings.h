// What the program remembers of its window from one run to the next, in the user's part of the registry.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace dravik::app {

class Settings {
  public:
    // Remembers nothing: for sessions that anyone can repeat.
    Settings() = default;
    // Below HKEY_CURRENT_USER.
    explicit Settings(std::wstring key) : key_(std::move(key)) {}

    std::optional<DWORD> number(const wchar_t* name) const;
    std::wstring text(const wchar_t* name) const;
    std::vector<BYTE> bytes(const wchar_t* name) const;
    // Failures are of no concern: the window then comes up in its usual place.
    void setNumber(const wchar_t* name, DWORD value) const noexcept;
    void setText(const wchar_t* name, const std::wstring& value) const noexcept;
    void setBytes(const wchar_t* name, const void* value, std::size_t size) const noexcept;

  private:
    void set(const wchar_t* name, DWORD type, const void* value, std::size_t size) const noexcept;

    std::wstring key_;
};

}  // namespace dravik::app
