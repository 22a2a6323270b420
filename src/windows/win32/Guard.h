// The one boundary between the models and Windows: no exception of a procedure may leave a window procedure.
#pragma once

#include <utility>

#include "base/Failure.h"
#include "windows/win32/Entry.h"

namespace dravik::win32 {

// Writes a failure that nobody reported to the debugger's output.
void tellDebugger(const Failure& failure) noexcept;

// Runs `body`; false when it threw.
template <class Body>
bool guarded(Body&& body) noexcept {
    const Entry entry;
    try {
        std::forward<Body>(body)();
        return true;
    } catch (...) {
        try {
            tellDebugger(currentFailure());
        } catch (...) {
            return false;
        }
        return false;
    }
}

}  // namespace dravik::win32
