// Files that are whole at any instant: replaced by a complete new version or not at all, the previous version
// kept beside them. Paths are UTF-8.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "base/FileSystem.h"

namespace dravik {

// What the previous version of a file, and a deleted file, is kept as.
std::string backupOf(const std::string& file);

// Looks at what was written, under another name, before it takes its place; raises Failure to keep it from
// doing so.
using FileCheck = std::function<void(const std::string& written)>;

// Replaces or makes the file, and its folder when that is missing. The new version is on the disk when this
// returns; the previous one stays as backupOf(file) when `keepsBackup`. A symbolic link stays one, and the
// file keeps its mode and group. Raises Failure naming the file: Disk full (61), Permission denied (70), for
// a file that is read-only as well, Path/File access error (75), Path not found (76), Device I/O error (57);
// file and backup are then as they were, unless it raises Unflushed.
void writeWholeFile(const std::string& file, std::span<const std::uint8_t> content, bool keepsBackup,
                    const FileCheck& check = {});

// The content; raises File not found (53), or as above, and Out of memory (7) beyond `most` bytes.
std::vector<std::uint8_t> readWholeFile(const std::string& file, std::uint64_t most);

// False as well when there is nothing to compare; raises as readWholeFile() does.
bool haveSameContent(const std::string& a, const std::string& b);

// Raises File already exists (58) when the new name is taken, File not found (53) when there is nothing to
// rename.
void renameFile(const std::string& from, const std::string& to);

// Moves the file to its backup, replacing that, or deletes it unless it `becomesBackup`; raises File not
// found (53) and as above.
void retireFile(const std::string& file, bool becomesBackup);

}  // namespace dravik
