// What the file system says of names, and folders. Names are UTF-8. On Windows the system is asked directly:
// the standard library's own way brings its streams and locales along, most of a megabyte.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <system_error>
#include <vector>

namespace dravik {

enum class EntryKind { None, File, Folder, Other };

// None as well where the system does not tell.
EntryKind entryKind(const std::string& path);
std::uint64_t fileSize(const std::string& file, std::error_code& error);
// The names in a folder, in no order; those until the error when there is one.
std::vector<std::string> namesIn(const std::string& folder, std::error_code& error);
// With the folders that it stands in.
void makeFolders(const std::string& folder, std::error_code& error);
void removeFile(const std::string& file);
// Null with errno set.
std::FILE* openToRead(const std::string& file);

// The parts of a path: the folder without its last separator, and the name in it.
std::string folderOf(const std::string& path);
std::string nameOf(const std::string& path);

}  // namespace dravik
