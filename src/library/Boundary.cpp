#include "library/Boundary.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "base/Failure.h"
#include "base/Utf.h"

namespace dravik::library {
namespace {

dravik_status statusOf(std::int32_t number) {
    switch (static_cast<RuntimeError>(number)) {
        case RuntimeError::InvalidProcedureCall:
        case RuntimeError::BadFileName:
        case RuntimeError::FileAlreadyExists:
            return DRAVIK_BAD_ARGUMENT;
        case RuntimeError::FileNotFound:
        case RuntimeError::PathNotFound:
            return DRAVIK_NOT_FOUND;
        case RuntimeError::DiskFull:
        case RuntimeError::PermissionDenied:
        case RuntimeError::PathFileAccessError:
            return DRAVIK_NO_ACCESS;
        case RuntimeError::DeviceIoError:
            return DRAVIK_DAMAGED;
        case RuntimeError::OutOfMemory:
            return DRAVIK_NO_MEMORY;
        default:
            return DRAVIK_INTERNAL;
    }
}

void tell(dravik_error* error, dravik_status status, std::string_view text) noexcept {
    if (!error) return;
    std::size_t length = std::min(text.size(), sizeof error->text - 1);
    if (length < text.size())
        while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) --length;
    error->status = status;
    std::replace_copy_if(
        text.begin(), text.begin() + static_cast<std::ptrdiff_t>(length), error->text,
        [](char c) { return static_cast<unsigned char>(c) < 0x20; }, ' ');
    error->text[length] = '\0';
}

}  // namespace

dravik_status told(dravik_error* error) noexcept {
    dravik_status status = DRAVIK_INTERNAL;
    try {
        throw;
    } catch (const Refusal& refusal) {
        tell(error, status = refusal.status, refusal.text);
    } catch (const std::bad_alloc&) {
        tell(error, status = DRAVIK_NO_MEMORY, "Out of memory");
    } catch (const Failure& failure) {
        tell(error, status = statusOf(failure.number()), failure.description());
    } catch (const std::exception& exception) {
        tell(error, status, exception.what());
    } catch (...) {
        tell(error, status, "Internal error");
    }
    return status;
}

void checkPointer(const void* pointer, const char* name) {
    if (!pointer) throw Refusal{DRAVIK_BAD_ARGUMENT, std::string(name) + " is null"};
}

void checkText(const char* text, const char* name) {
    checkPointer(text, name);
    for (std::string_view rest = text; !rest.empty();) {
        const Utf8Character first = firstCharacter(rest);
        if (!first.valid || (first.code < 0x20 && first.code != U'\n') || first.code == 0x7F)
            throw Refusal{DRAVIK_BAD_ARGUMENT, std::string(name) + " is not UTF-8 text"};
        rest.remove_prefix(first.bytes);
    }
}

}  // namespace dravik::library
