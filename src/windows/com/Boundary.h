// The one way in and out of COM: no exception leaves through it, and what a COM object reports comes in as a
// Failure.
//
// A run-time number n travels as 0x800A0000 + n and comes back as n; a tool's own code stays as it is.
#pragma once

#include <type_traits>
#include <utility>

#include "base/Failure.h"
#include "windows/com/ComPtr.h"
#include "windows/headers/FloatingPoint.h"

namespace dravik::com {

// The code that a failure has for COM, and back. Also out of memory, type mismatch, overflow and bad index
// come back as run-time numbers.
HRESULT hresultOf(const Failure& failure) noexcept;
std::int32_t numberOf(HRESULT code) noexcept;

// The Failure of a code alone, with the run-time's or the system's text for it.
Failure failureOf(HRESULT code);

// Inside a catch block: leaves source and description of the current exception for the caller of the
// interface `iid` and gives the code to return. `source` stands in where the failure names none.
HRESULT reportCurrent(REFIID iid, const wchar_t* source) noexcept;

// Runs the body of a method of interface `iid`. The body returns nothing or an HRESULT and may throw.
template <typename Body>
HRESULT comCall(REFIID iid, const wchar_t* source, Body&& body) noexcept {
    const QuietFloatingPoint quiet;
    try {
        if constexpr (std::is_void_v<std::invoke_result_t<Body>>) {
            std::forward<Body>(body)();
            return S_OK;
        } else {
            return std::forward<Body>(body)();
        }
    } catch (...) {
        return reportCurrent(iid, source);
    }
}

// The pointer when there is one; raises Failure E_POINTER.
template <typename T>
T& required(T* pointer) {
    if (!pointer) throw failureOf(E_POINTER);
    return *pointer;
}

// Raises Failure when the code is one: with the text that the object left if it says that it leaves texts for
// `iid`.
void check(HRESULT code, IUnknown* object, REFIID iid);
// For functions that leave no text.
void check(HRESULT code);

// The Failure that a late-bound call reported; `exception` is emptied. `code` is what Invoke returned.
Failure failureOf(HRESULT code, EXCEPINFO& exception);

}  // namespace dravik::com
