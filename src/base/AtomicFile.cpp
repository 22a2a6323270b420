#include "base/AtomicFile.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <system_error>

#include "base/Failure.h"
#include "base/FileSystem.h"
#include "base/Paths.h"

#ifdef _WIN32
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#else
#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace dravik {
namespace {

constexpr std::string_view kTemporary = ".tmp-";

[[noreturn]] void fail(RuntimeError number, const std::string& what, const std::string& file,
                       const std::string& problem) {
    throw Failure(number, what + " \"" + file + "\": " + problem);
}

#ifdef _WIN32

using SystemError = DWORD;

[[noreturn]] void failWith(SystemError error, const std::string& what, const std::string& file) {
    const auto [number, problem] = [error]() -> std::pair<RuntimeError, std::string> {
        switch (error) {
            case ERROR_DISK_FULL:
            case ERROR_HANDLE_DISK_FULL:
                return {RuntimeError::DiskFull, "the disk is full"};
            case ERROR_ACCESS_DENIED:
            case ERROR_SHARING_VIOLATION:
            case ERROR_LOCK_VIOLATION:
            case ERROR_WRITE_PROTECT:
                return {RuntimeError::PermissionDenied, "access is denied"};
            case ERROR_FILE_NOT_FOUND:
                return {RuntimeError::FileNotFound, "there is no such file"};
            case ERROR_PATH_NOT_FOUND:
                return {RuntimeError::PathNotFound, "there is no such folder"};
            case ERROR_ALREADY_EXISTS:
            case ERROR_FILE_EXISTS:
                return {RuntimeError::FileAlreadyExists, "the file already exists"};
            case ERROR_CRC:
            case ERROR_WRITE_FAULT:
            case ERROR_READ_FAULT:
                return {RuntimeError::DeviceIoError, "the device failed"};
            default:
                return {RuntimeError::PathFileAccessError, "system error " + std::to_string(error)};
        }
    }();
    fail(number, what, file, problem);
}

unsigned long processNumber() {
    return GetCurrentProcessId();
}

bool processRuns(unsigned long number) {
    const HANDLE process = OpenProcess(SYNCHRONIZE, FALSE, number);
    if (!process) return GetLastError() == ERROR_ACCESS_DENIED;
    const bool runs = WaitForSingleObject(process, 0) == WAIT_TIMEOUT;
    CloseHandle(process);
    return runs;
}

class FileHandle {
  public:
    explicit FileHandle(HANDLE handle) : handle_(handle) {}
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;
    ~FileHandle() { CloseHandle(handle_); }
    HANDLE get() const { return handle_; }

  private:
    HANDLE handle_;
};

void writeThrough(const std::string& file, std::span<const std::uint8_t> content,
                  const std::string& reported) {
    const HANDLE opened = CreateFileW(wideName(file).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (opened == INVALID_HANDLE_VALUE) failWith(GetLastError(), "Cannot write", reported);
    const FileHandle handle(opened);
    while (!content.empty()) {
        const DWORD part = static_cast<DWORD>(std::min<std::size_t>(content.size(), 1u << 24));
        DWORD written = 0;
        if (!WriteFile(handle.get(), content.data(), part, &written, nullptr) || written == 0)
            failWith(GetLastError(), "Cannot write", reported);
        content = content.subspan(written);
    }
    if (!FlushFileBuffers(handle.get())) failWith(GetLastError(), "Cannot write", reported);
}

void replaceFile(const std::string& from, const std::string& to, bool keepsBackup) {
    if (keepsBackup && fileExists(to)) {
        // ReplaceFile keeps the name present throughout and moves the previous version to the backup.
        if (ReplaceFileW(wideName(to).c_str(), wideName(from).c_str(), wideName(backupOf(to)).c_str(), 0,
                         nullptr, nullptr))
            return;
    }
    if (!MoveFileExW(wideName(from).c_str(), wideName(to).c_str(),
                     MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        failWith(GetLastError(), "Cannot write", to);
}

void moveFile(const std::string& from, const std::string& to, bool replaces, const std::string& what) {
    const DWORD flags = MOVEFILE_WRITE_THROUGH | (replaces ? MOVEFILE_REPLACE_EXISTING : 0u);
    if (!MoveFileExW(wideName(from).c_str(), wideName(to).c_str(), flags))
        failWith(GetLastError(), what, replaces ? from : GetLastError() == ERROR_ALREADY_EXISTS ? to : from);
}

#else

using SystemError = int;

[[noreturn]] void failWith(SystemError error, const std::string& what, const std::string& file) {
    const RuntimeError number = [error] {
        switch (error) {
            case ENOSPC:
            case EDQUOT:
            case EFBIG:
                return RuntimeError::DiskFull;
            case EACCES:
            case EPERM:
            case EROFS:
                return RuntimeError::PermissionDenied;
            case ENOENT:
            case ENOTDIR:
                return RuntimeError::PathNotFound;
            case EEXIST:
                return RuntimeError::FileAlreadyExists;
            case ENAMETOOLONG:
                return RuntimeError::BadFileName;
            case EIO:
                return RuntimeError::DeviceIoError;
            default:
                return RuntimeError::PathFileAccessError;
        }
    }();
    fail(number, what, file, std::generic_category().message(error));
}

unsigned long processNumber() {
    return static_cast<unsigned long>(getpid());
}

bool processRuns(unsigned long number) {
    return kill(static_cast<pid_t>(number), 0) == 0 || errno == EPERM;
}

class FileHandle {
  public:
    explicit FileHandle(int handle) : handle_(handle) {}
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;
    ~FileHandle() {
        if (handle_ >= 0) close(handle_);
    }
    int get() const { return handle_; }
    int closeNow() {
        const int result = close(handle_);
        handle_ = -1;
        return result;
    }

  private:
    int handle_;
};

void writeThrough(const std::string& file, std::span<const std::uint8_t> content,
                  const std::string& reported) {
    FileHandle handle(open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    if (handle.get() < 0) failWith(errno, "Cannot write", reported);
    while (!content.empty()) {
        const ssize_t written = write(handle.get(), content.data(), content.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) failWith(errno, "Cannot write", reported);
        if (written == 0) failWith(ENOSPC, "Cannot write", reported);
        content = content.subspan(static_cast<std::size_t>(written));
    }
    if (fsync(handle.get()) != 0 || handle.closeNow() != 0) failWith(errno, "Cannot write", reported);
}

// A rename is on the disk once its folder is; a file system that cannot flush a folder is trusted.
void flushFolder(const std::string& file) {
    const std::string folder = folderOf(file);
    const FileHandle handle(open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (handle.get() >= 0) fsync(handle.get());
}

void replaceFile(const std::string& from, const std::string& to, bool keepsBackup) {
    if (keepsBackup && fileExists(to)) {
        // A second name for the previous version, so that its own name never goes; a copy where links are not
        // to be had.
        const std::string second = from + "b";
        std::error_code error;
        if (link(to.c_str(), second.c_str()) != 0)
            std::filesystem::copy_file(toPath(to), toPath(second), error);
        if (error || rename(second.c_str(), backupOf(to).c_str()) != 0) {
            const int cause = error ? error.value() : errno;
            unlink(second.c_str());
            failWith(cause, "Cannot keep the previous version of", to);
        }
        // Renaming does nothing where both are names of one file already: a save was killed between the
        // backup and the new version.
        unlink(second.c_str());
    }
    if (rename(from.c_str(), to.c_str()) != 0) failWith(errno, "Cannot write", to);
    flushFolder(to);
}

void moveFile(const std::string& from, const std::string& to, bool replaces, const std::string& what) {
    if (replaces) {
        if (rename(from.c_str(), to.c_str()) != 0) failWith(errno, what, from);
    } else if (link(from.c_str(), to.c_str()) == 0) {
        unlink(from.c_str());
    } else if (errno == EEXIST) {
        failWith(EEXIST, what, to);
    } else {
        // No links here: the caller has seen that the new name is free.
        if (rename(from.c_str(), to.c_str()) != 0) failWith(errno, what, from);
    }
    flushFolder(to);
}

#endif

std::string temporaryOf(const std::string& file) {
    static std::atomic<unsigned> counter{0};
    return file + std::string(kTemporary) + std::to_string(processNumber()) + "-" + std::to_string(++counter);
}

// What a save that was killed left behind.
void removeLeftovers(const std::string& file) noexcept {
    try {
        const std::string start = nameOf(file) + std::string(kTemporary);
        const std::string folder = file.substr(0, file.size() - nameOf(file).size());
        std::error_code error;
        for (const std::string& name : namesIn(folderOf(file), error)) {
            if (!name.starts_with(start)) continue;
            const unsigned long process = std::strtoul(name.c_str() + start.size(), nullptr, 10);
            if (process == processNumber() || !processRuns(process)) removeFile(folder + name);
        }
    } catch (const std::exception&) {
        return;
    }
}

void makeFolderOf(const std::string& file) {
    const std::string folder = folderOf(file);
    if (folder.empty() || entryKind(folder) == EntryKind::Folder) return;
    std::error_code error;
    makeFolders(folder, error);
    if (error) failWith(static_cast<SystemError>(error.value()), "Cannot make folder", folder);
}

}  // namespace

std::string backupOf(const std::string& file) {
    return file + ".bak";
}

bool fileExists(const std::string& file) {
    return entryKind(file) != EntryKind::None;
}

void writeWholeFile(const std::string& file, std::span<const std::uint8_t> content, bool keepsBackup) {
    makeFolderOf(file);
    removeLeftovers(file);
    const std::string temporary = temporaryOf(file);
    try {
        writeThrough(temporary, content, file);
        replaceFile(temporary, file, keepsBackup);
    } catch (...) {
        removeFile(temporary);
        throw;
    }
}

std::vector<std::uint8_t> readWholeFile(const std::string& file, std::uint64_t most) {
    const EntryKind kind = entryKind(file);
    if (kind == EntryKind::None)
        throw Failure(RuntimeError::FileNotFound, "File not found: \"" + file + "\"");
    if (kind != EntryKind::File)
        fail(RuntimeError::PathFileAccessError, "Cannot read", file, "it is no file");
    std::error_code error;
    const std::uint64_t size = fileSize(file, error);
    if (error) fail(RuntimeError::PathFileAccessError, "Cannot read", file, error.message());
    if (size > most) fail(RuntimeError::OutOfMemory, "Cannot read", file, "the file is too large");
    std::vector<std::uint8_t> content(static_cast<std::size_t>(size));
    std::FILE* const stream = openToRead(file);
    if (!stream) {
        const int cause = errno;
        fail(cause == EACCES ? RuntimeError::PermissionDenied : RuntimeError::PathFileAccessError,
             "Cannot read", file, std::generic_category().message(cause));
    }
    const std::size_t got = content.empty() ? 0 : std::fread(content.data(), 1, content.size(), stream);
    std::fclose(stream);
    if (got != content.size()) fail(RuntimeError::DeviceIoError, "Cannot read", file, "it ends early");
    return content;
}

void renameFile(const std::string& from, const std::string& to) {
    if (!fileExists(from)) throw Failure(RuntimeError::FileNotFound, "File not found: \"" + from + "\"");
    if (fileExists(to)) throw Failure(RuntimeError::FileAlreadyExists, "File already exists: \"" + to + "\"");
    moveFile(from, to, false, "Cannot rename");
}

void retireFile(const std::string& file, bool becomesBackup) {
    if (!fileExists(file)) throw Failure(RuntimeError::FileNotFound, "File not found: \"" + file + "\"");
    if (becomesBackup) {
        moveFile(file, backupOf(file), true, "Cannot delete");
        return;
    }
    removeFile(file);
    if (fileExists(file)) fail(RuntimeError::PermissionDenied, "Cannot delete", file, "access is denied");
}

}  // namespace dravik
