// What the Windows halves of the files here share: an owned handle of a file, and writing all of a text.
#pragma once

#include <windows.h>

#include <cstdint>
#include <span>

#include "base/Handle.h"

namespace dravik {

struct FileObject {
    using Value = HANDLE;
    static HANDLE none() noexcept { return INVALID_HANDLE_VALUE; }
    static void close(HANDLE file) noexcept { CloseHandle(file); }
};

inline int lastError() {
    return static_cast<int>(GetLastError());
}

// Writes all of it where the file's pointer stands; false when the system's last error says why not.
bool writeAll(HANDLE file, std::span<const std::uint8_t> content);
bool movePointer(HANDLE file, std::uint64_t place);

}  // namespace dravik
