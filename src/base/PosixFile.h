// What the POSIX halves of the files here share: an owned descriptor, writing all of a text, the rights of a
// file that a new one takes over.
#pragma once

#include <unistd.h>

#include <cstdint>
#include <span>
#include <string>

#include "base/Handle.h"

namespace dravik {

struct FileDescriptor {
    using Value = int;
    static int none() noexcept { return -1; }
    static void close(int file) noexcept { ::close(file); }
};

// Writes all of it from `place` on; the errno of what went wrong, 0 when nothing did.
int writeAll(int file, std::span<const std::uint8_t> content, std::uint64_t place);
// Gives the open file the mode and, where the system lets it, the group and owner of the file `model`, when
// there is one.
void takeRights(int file, const std::string& model);

}  // namespace dravik
