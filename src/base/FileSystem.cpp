#include "base/FileSystem.h"

#include <string_view>
#include <utility>

#include "base/Paths.h"

#ifdef _WIN32
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#endif

namespace dravik {

#ifdef _WIN32

namespace {

std::error_code lastError() {
    return {static_cast<int>(GetLastError()), std::system_category()};
}

std::string narrow(const wchar_t* wide) {
    const int size = WideCharToMultiByte(CP_UTF8, 0, wide, -1, nullptr, 0, nullptr, nullptr);
    if (size <= 0) return {};
    std::string utf8(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide, -1, utf8.data(), size, nullptr, nullptr);
    utf8.pop_back();
    return utf8;
}

constexpr char kSeparators[] = "/\\";

}  // namespace

EntryKind entryKind(const std::string& path) {
    const DWORD attributes = GetFileAttributesW(wideName(path).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return EntryKind::None;
    if (attributes & FILE_ATTRIBUTE_DEVICE) return EntryKind::Other;
    return attributes & FILE_ATTRIBUTE_DIRECTORY ? EntryKind::Folder : EntryKind::File;
}

std::uint64_t fileSize(const std::string& file, std::error_code& error) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    error.clear();
    if (!GetFileAttributesExW(wideName(file).c_str(), GetFileExInfoStandard, &data)) error = lastError();
    return std::uint64_t{data.nFileSizeHigh} << 32 | data.nFileSizeLow;
}

std::vector<std::string> namesIn(const std::string& folder, std::error_code& error) {
    std::vector<std::string> names;
    WIN32_FIND_DATAW entry{};
    error.clear();
    const bool open =
        folder.empty() || std::string_view(kSeparators).find(folder.back()) != std::string_view::npos;
    const HANDLE found = FindFirstFileW(wideName(folder + (open ? "*" : "\\*")).c_str(), &entry);
    if (found == INVALID_HANDLE_VALUE) {
        error = lastError();
        return names;
    }
    try {
        do {
            std::string name = narrow(entry.cFileName);
            if (name != "." && name != "..") names.push_back(std::move(name));
        } while (FindNextFileW(found, &entry));
    } catch (...) {
        FindClose(found);
        throw;
    }
    if (GetLastError() != ERROR_NO_MORE_FILES) error = lastError();
    FindClose(found);
    return names;
}

void makeFolders(const std::string& folder, std::error_code& error) {
    error.clear();
    if (folder.empty() || entryKind(folder) == EntryKind::Folder) return;
    if (CreateDirectoryW(wideName(folder).c_str(), nullptr)) return;
    error = lastError();
    const std::string outer = folderOf(folder);
    if (error.value() != ERROR_PATH_NOT_FOUND || outer.empty() || outer == folder) return;
    makeFolders(outer, error);
    if (!error && !CreateDirectoryW(wideName(folder).c_str(), nullptr)) error = lastError();
}

void removeFile(const std::string& file) {
    DeleteFileW(wideName(file).c_str());
}

std::FILE* openToRead(const std::string& file) {
    return _wfopen(wideName(file).c_str(), L"rb");
}

std::string folderOf(const std::string& path) {
    const std::size_t end = path.find_last_of(kSeparators);
    if (end == std::string::npos) return {};
    // The root of a drive is its separator.
    return path.substr(0, end == 2 && path[1] == ':' ? end + 1 : end);
}

std::string nameOf(const std::string& path) {
    const std::size_t end = path.find_last_of(kSeparators);
    return end == std::string::npos ? path : path.substr(end + 1);
}

#else

namespace fs = std::filesystem;

EntryKind entryKind(const std::string& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (!fs::exists(status)) return EntryKind::None;
    if (fs::is_directory(status)) return EntryKind::Folder;
    return fs::is_regular_file(status) ? EntryKind::File : EntryKind::Other;
}

std::uint64_t fileSize(const std::string& file, std::error_code& error) {
    return fs::file_size(file, error);
}

std::vector<std::string> namesIn(const std::string& folder, std::error_code& error) {
    std::vector<std::string> names;
    fs::directory_iterator entries(folder.empty() ? "." : folder, error);
    for (; !error && entries != fs::directory_iterator(); entries.increment(error))
        names.push_back(fromPath(entries->path().filename()));
    return names;
}

void makeFolders(const std::string& folder, std::error_code& error) {
    fs::create_directories(folder, error);
}

void removeFile(const std::string& file) {
    std::error_code ignored;
    fs::remove(file, ignored);
}

std::FILE* openToRead(const std::string& file) {
    return std::fopen(file.c_str(), "rb");
}

std::string folderOf(const std::string& path) {
    return fromPath(toPath(path).parent_path());
}

std::string nameOf(const std::string& path) {
    return fromPath(toPath(path).filename());
}

#endif

}  // namespace dravik
