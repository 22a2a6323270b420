#include "windows/com/Boundary.h"

#include <array>
#include <cstdio>
#include <new>

#include "windows/com/ComText.h"

namespace dravik::com {
namespace {

constexpr std::int32_t kControlErrors = static_cast<std::int32_t>(0x800A0000u);
// A script language says that it told its own host about an error.
constexpr HRESULT kScriptReported = static_cast<HRESULT>(0x80020101u);
constexpr std::int32_t kLargestRuntimeNumber = 0xFFFF;

// Codes of the system that stand for failures of the run-time.
constexpr std::array kSameMeaning = {
    std::pair{E_OUTOFMEMORY, RuntimeError::OutOfMemory},
    std::pair{DISP_E_TYPEMISMATCH, RuntimeError::TypeMismatch},
    std::pair{DISP_E_OVERFLOW, RuntimeError::Overflow},
    std::pair{DISP_E_BADINDEX, RuntimeError::SubscriptOutOfRange},
};

std::string codeText(HRESULT code) {
    const std::int32_t number = numberOf(code);
    if (number > 0 && number <= kLargestRuntimeNumber) return std::string(runtimeErrorText(number));
    if (code == kScriptReported) return "The script has reported an error";
    std::array<wchar_t, 512> text{};
    DWORD length =
        FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                       static_cast<DWORD>(code), 0, text.data(), static_cast<DWORD>(text.size()), nullptr);
    while (length > 0 && (text[length - 1] == L'\r' || text[length - 1] == L'\n' || text[length - 1] == L' '))
        --length;
    if (length > 0) return utf8({text.data(), length});
    std::array<char, 40> number_text{};
    std::snprintf(number_text.data(), number_text.size(), "Automation error 0x%08X",
                  static_cast<unsigned>(code));
    return number_text.data();
}

void leaveErrorInfo(REFIID iid, const std::wstring& source, const std::wstring& description) {
    ComPtr<ICreateErrorInfo> info;
    if (FAILED(CreateErrorInfo(info.put()))) return;
    info->SetGUID(iid);
    info->SetSource(const_cast<LPOLESTR>(source.c_str()));
    info->SetDescription(const_cast<LPOLESTR>(description.c_str()));
    if (const auto readable = info.as<IErrorInfo>()) SetErrorInfo(0, readable.get());
}

// The source and description that an object left, when it leaves any for that interface.
Failure failureLeft(HRESULT code, IUnknown* object, REFIID iid) {
    Failure plain = failureOf(code);
    if (!object) return plain;
    const auto supports = ComPtr<IUnknown>(object).as<ISupportErrorInfo>();
    if (!supports || supports->InterfaceSupportsErrorInfo(iid) != S_OK) return plain;
    ComPtr<IErrorInfo> info;
    if (GetErrorInfo(0, info.put()) != S_OK || !info) return plain;
    Bstr description, source;
    info->GetDescription(description.put());
    info->GetSource(source.put());
    std::string text = description.utf8();
    if (text.empty()) text = plain.description();
    return Failure(plain.number(), std::move(text), source.utf8());
}

}  // namespace

HRESULT hresultOf(const Failure& failure) noexcept {
    const std::int32_t number = failure.number();
    if (number == static_cast<std::int32_t>(RuntimeError::OutOfMemory)) return E_OUTOFMEMORY;
    if (number > 0 && number <= kLargestRuntimeNumber) return kControlErrors + number;
    return number < 0 ? static_cast<HRESULT>(number) : E_FAIL;
}

std::int32_t numberOf(HRESULT code) noexcept {
    for (const auto& [same, error] : kSameMeaning)
        if (same == code) return static_cast<std::int32_t>(error);
    if ((code & static_cast<HRESULT>(0xFFFF0000u)) == kControlErrors) return code & kLargestRuntimeNumber;
    return code;
}

Failure failureOf(HRESULT code) {
    return Failure(numberOf(code), codeText(code));
}

HRESULT reportCurrent(REFIID iid, const wchar_t* source) noexcept {
    try {
        const Failure failure = currentFailure();
        leaveErrorInfo(iid, failure.source().empty() ? std::wstring(source) : wide(failure.source()),
                       wide(failure.description()));
        return hresultOf(failure);
    } catch (...) {
        SetErrorInfo(0, nullptr);
        return E_OUTOFMEMORY;
    }
}

void check(HRESULT code, IUnknown* object, REFIID iid) {
    if (FAILED(code)) throw failureLeft(code, object, iid);
}

void check(HRESULT code) {
    if (FAILED(code)) throw failureOf(code);
}

Failure failureOf(HRESULT code, EXCEPINFO& exception) {
    if (code != DISP_E_EXCEPTION) return failureOf(code);
    if (exception.pfnDeferredFillIn) exception.pfnDeferredFillIn(&exception);
    Bstr description, source, help;
    *description.put() = exception.bstrDescription;
    *source.put() = exception.bstrSource;
    *help.put() = exception.bstrHelpFile;
    const HRESULT own = FAILED(exception.scode) ? exception.scode
                        : exception.wCode       ? kControlErrors + exception.wCode
                                                : E_FAIL;
    exception = {};
    const Failure plain = failureOf(own);
    std::string text = description.utf8();
    if (text.empty()) text = plain.description();
    return Failure(plain.number(), std::move(text), source.utf8());
}

}  // namespace dravik::com
