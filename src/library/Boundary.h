// The way out of the library: whatever a call raises becomes a status and a text, and nothing else leaves it.
#pragma once

#include <string>

#include "dravik/dravik.h"

namespace dravik::library {

// Raised by the library's own checks.
struct Refusal {
    dravik_status status;
    std::string text;
};

// The status of the exception now being handled, told in `error` unless that is null. Call only inside a
// catch block.
dravik_status told(dravik_error* error) noexcept;

// Runs the body of a call that can fail.
template <class Body>
dravik_status guarded(dravik_error* error, Body&& body) noexcept {
    try {
        body();
        if (error) *error = {};
        return DRAVIK_OK;
    } catch (...) {
        return told(error);
    }
}

// Raises Refusal naming what is null.
void checkPointer(const void* pointer, const char* name);
// Raises Refusal for a text that is null, not UTF-8 or has control characters other than line feeds.
void checkText(const char* text, const char* name);

}  // namespace dravik::library
