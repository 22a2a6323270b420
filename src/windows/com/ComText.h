// Texts that COM owns, and those that it hands over.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "base/Utf.h"

namespace dravik::com {

// A null BSTR is the empty text.
std::string toUtf8(BSTR text);
// A null pointer is the empty text.
std::string toUtf8(const wchar_t* text);

class Bstr {
  public:
    Bstr() = default;
    // Raise std::bad_alloc.
    explicit Bstr(std::string_view utf8);
    explicit Bstr(std::wstring_view wide);
    Bstr(const Bstr&) = delete;
    Bstr& operator=(const Bstr&) = delete;
    Bstr(Bstr&& other) noexcept : text_(std::exchange(other.text_, nullptr)) {}
    ~Bstr() { SysFreeString(text_); }

    BSTR get() const noexcept { return text_; }
    BSTR detach() noexcept { return std::exchange(text_, nullptr); }
    BSTR* put() noexcept {
        SysFreeString(detach());
        return &text_;
    }
    std::string utf8() const { return toUtf8(text_); }

  private:
    BSTR text_ = nullptr;
};

}  // namespace dravik::com
