#include <algorithm>
#include <string_view>
#include <utility>

#include "base/FileSystem.h"
#include "base/Utf.h"
#include "base/WindowsFile.h"

namespace dravik {
namespace {

constexpr std::string_view kSeparators = "/\\";
constexpr std::size_t kLongestName = 255;

struct Search : FileObject {
    static void close(HANDLE search) noexcept { FindClose(search); }
};

std::error_code lastErrorCode() {
    return {lastError(), std::system_category()};
}

}  // namespace

bool writeAll(HANDLE file, std::span<const std::uint8_t> content) {
    while (!content.empty()) {
        const DWORD part = static_cast<DWORD>(std::min<std::size_t>(content.size(), 1u << 24));
        DWORD written = 0;
        if (!WriteFile(file, content.data(), part, &written, nullptr)) return false;
        if (written == 0) {
            SetLastError(ERROR_DISK_FULL);
            return false;
        }
        content = content.subspan(written);
    }
    return true;
}

bool movePointer(HANDLE file, std::uint64_t place) {
    LARGE_INTEGER to{};
    to.QuadPart = static_cast<LONGLONG>(place);
    return SetFilePointerEx(file, to, nullptr, FILE_BEGIN);
}

const char kSeparator = '\\';

std::string folderOf(const std::string& path) {
    const std::size_t end = path.find_last_of(kSeparators);
    if (end == std::string::npos) return {};
    // The root of a drive is its separator.
    return path.substr(0, end == 2 && path[1] == ':' ? end + 1 : end);
}

std::string nameOf(const std::string& path) {
    return path.substr(path.find_last_of(kSeparators) + 1);
}

EntryKind entryKind(const std::string& path) {
    const DWORD attributes = GetFileAttributesW(wide(path).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return EntryKind::None;
    if (attributes & FILE_ATTRIBUTE_DEVICE) return EntryKind::Other;
    return attributes & FILE_ATTRIBUTE_DIRECTORY ? EntryKind::Folder : EntryKind::File;
}

bool isStillToCome(const std::string& folder) {
    if (GetFileAttributesW(wide(folder).c_str()) != INVALID_FILE_ATTRIBUTES) return false;
    const DWORD error = GetLastError();
    if (error != ERROR_FILE_NOT_FOUND && error != ERROR_PATH_NOT_FOUND) return false;
    if (wide(nameOf(folder)).size() > kLongestName) return false;
    const std::string outer = folderOf(folder);
    return outer.empty() || outer == folder || entryKind(outer) == EntryKind::Folder || isStillToCome(outer);
}

std::uint64_t fileSize(const std::string& file, std::error_code& error) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    error.clear();
    if (!GetFileAttributesExW(wide(file).c_str(), GetFileExInfoStandard, &data)) error = lastErrorCode();
    return std::uint64_t{data.nFileSizeHigh} << 32 | data.nFileSizeLow;
}

std::chrono::system_clock::time_point fileTime(const std::string& file, std::error_code& error) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    error.clear();
    if (!GetFileAttributesExW(wide(file).c_str(), GetFileExInfoStandard, &data)) error = lastErrorCode();
    using Ticks = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;
    constexpr Ticks kEpoch(116444736000000000);  // of 1970, counted from 1601
    const Ticks written(static_cast<std::int64_t>(std::uint64_t{data.ftLastWriteTime.dwHighDateTime} << 32 |
                                                  data.ftLastWriteTime.dwLowDateTime));
    return std::chrono::system_clock::time_point(
        std::chrono::duration_cast<std::chrono::system_clock::duration>(written - kEpoch));
}

std::vector<std::string> namesIn(const std::string& folder, std::error_code& error) {
    std::vector<std::string> names;
    WIN32_FIND_DATAW entry{};
    error.clear();
    const bool open = folder.empty() || kSeparators.find(folder.back()) != std::string_view::npos;
    const Handle<Search> search(FindFirstFileW(wide(folder + (open ? "*" : "\\*")).c_str(), &entry));
    if (!search) {
        error = lastErrorCode();
        return names;
    }
    do {
        std::string name = utf8(entry.cFileName);
        if (name != "." && name != "..") names.push_back(std::move(name));
    } while (FindNextFileW(search.get(), &entry));
    if (GetLastError() != ERROR_NO_MORE_FILES) error = lastErrorCode();
    return names;
}

void makeFolders(const std::string& folder, std::error_code& error) {
    error.clear();
    if (folder.empty() || entryKind(folder) == EntryKind::Folder) return;
    if (CreateDirectoryW(wide(folder).c_str(), nullptr)) return;
    error = lastErrorCode();
    const std::string outer = folderOf(folder);
    if (error.value() != ERROR_PATH_NOT_FOUND || outer.empty() || outer == folder) return;
    makeFolders(outer, error);
    if (!error && !CreateDirectoryW(wide(folder).c_str(), nullptr)) error = lastErrorCode();
}

// A rename is on the disk when it is done there.
void flushFolderOf(const std::string&) {}

// The system follows links itself.
std::string linkedFile(const std::string& file) {
    return file;
}

bool isReadOnly(const std::string& file) {
    const DWORD attributes = GetFileAttributesW(wide(file).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY);
}

void removeFile(const std::string& file) {
    DeleteFileW(wide(file).c_str());
}

void removeFolder(const std::string& folder) {
    RemoveDirectoryW(wide(folder).c_str());
}

// What is made in a folder has the rights that the folder gives.
void giveRights(const std::string&, const std::string&) {}

FilePtr openFile(const std::string& file, OpenFor purpose) {
    constexpr const wchar_t* kModes[] = {L"rb", L"wb", L"ab"};
    return FilePtr(_wfopen(wide(file).c_str(), kModes[static_cast<int>(purpose)]));
}

void writeThrough(const std::string& file, std::span<const std::uint8_t> content,
                  const std::string& reported) {
    const auto failure = [&] { return systemFailure(lastError(), "Cannot write", reported); };
    const Handle<FileObject> handle(CreateFileW(wide(file).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                                FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!handle) throw failure();
    if (!writeAll(handle.get(), content)) throw failure();
    if (!FlushFileBuffers(handle.get())) throw failure();
}

void keepSecond(const std::string& file, const std::string& second) {
    if (CreateHardLinkW(wide(second).c_str(), wide(file).c_str(), nullptr)) return;
    const std::wstring part = wide(second + kUnfinished);
    if (!CopyFileW(wide(file).c_str(), part.c_str(), FALSE) ||
        !MoveFileExW(part.c_str(), wide(second).c_str(), MOVEFILE_WRITE_THROUGH))
        throw systemFailure(lastError(), "Cannot keep the previous version of", file);
}

void replaceFile(const std::string& from, const std::string& to, const std::string& backup,
                 const std::string& second) {
    // ReplaceFile keeps the name present throughout, and the rights of the previous version with it.
    const bool keeps = !backup.empty() && fileExists(to);
    const std::wstring target = wide(to), previous = wide(second), kept = wide(backup);
    if (keeps && ReplaceFileW(target.c_str(), wide(from).c_str(), previous.c_str(), 0, nullptr, nullptr)) {
        constexpr DWORD kFlags = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
        if (MoveFileExW(previous.c_str(), kept.c_str(), kFlags)) return;
        const int error = lastError();
        MoveFileExW(previous.c_str(), target.c_str(), kFlags);
        throw systemFailure(error, "Cannot keep the previous version of", to);
    }
    if (!MoveFileExW(wide(from).c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        throw systemFailure(lastError(), "Cannot write", to);
}

void moveFile(const std::string& from, const std::string& to, IfTaken ifTaken, const std::string& what) {
    const DWORD replaces = ifTaken == IfTaken::Replace ? MOVEFILE_REPLACE_EXISTING : 0u;
    if (MoveFileExW(wide(from).c_str(), wide(to).c_str(), MOVEFILE_WRITE_THROUGH | replaces)) return;
    const int error = lastError();
    throw systemFailure(error, what, !replaces && error == ERROR_ALREADY_EXISTS ? to : from);
}

unsigned long processNumber() {
    return GetCurrentProcessId();
}

bool processRuns(unsigned long number) {
    struct Process : FileObject {
        static HANDLE none() noexcept { return nullptr; }
    };
    const Handle<Process> process(OpenProcess(SYNCHRONIZE, FALSE, number));
    return process ? WaitForSingleObject(process.get(), 0) == WAIT_TIMEOUT
                   : GetLastError() == ERROR_ACCESS_DENIED;
}

Failure systemFailure(int error, const std::string& what, const std::string& file) {
    switch (error) {
        case ERROR_DISK_FULL:
        case ERROR_HANDLE_DISK_FULL:
            return fileFailure(RuntimeError::DiskFull, what, file, "the disk is full");
        case ERROR_ACCESS_DENIED:
        case ERROR_SHARING_VIOLATION:
        case ERROR_LOCK_VIOLATION:
        case ERROR_WRITE_PROTECT:
            return fileFailure(RuntimeError::PermissionDenied, what, file, "access is denied");
        case ERROR_FILE_NOT_FOUND:
            return fileFailure(RuntimeError::FileNotFound, what, file, "there is no such file");
        case ERROR_PATH_NOT_FOUND:
            return fileFailure(RuntimeError::PathNotFound, what, file, "there is no such folder");
        case ERROR_ALREADY_EXISTS:
        case ERROR_FILE_EXISTS:
            return fileFailure(RuntimeError::FileAlreadyExists, what, file, "the file already exists");
        case ERROR_CRC:
        case ERROR_WRITE_FAULT:
        case ERROR_READ_FAULT:
            return fileFailure(RuntimeError::DeviceIoError, what, file, "the device failed");
        default:
            return fileFailure(RuntimeError::PathFileAccessError, what, file,
                               "system error " + std::to_string(error));
    }
}

}  // namespace dravik
