#include <dirent.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>

#include "base/FileSystem.h"
#include "base/Paths.h"
#include "base/PosixFile.h"

namespace dravik {
namespace {

constexpr char kKeeping[] = "Cannot keep the previous version of";

std::error_code systemError(int error) {
    return {error, std::generic_category()};
}

// The errno of flushing a folder, 0 for none and where there is nothing to flush: a folder that may not be
// read, or a file system that has no such thing, is trusted.
int flushFolder(const char* folder) noexcept {
    const Handle<FileDescriptor> handle(open(*folder ? folder : ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!handle) return errno == EACCES ? 0 : errno;
    return fsync(handle.get()) == 0 || errno == EINVAL || errno == ENOTSUP ? 0 : errno;
}

// Of the file's folder. Takes no memory, as what was done to the file can be taken back no more.
int flushOuterFolder(const std::string& file) noexcept {
    std::array<char, PATH_MAX> folder{};
    const std::size_t end = file.find_last_of(kSeparator);
    if (end == std::string::npos) return flushFolder("");
    const std::size_t size = std::max<std::size_t>(end, 1);
    if (size >= folder.size()) return ENAMETOOLONG;
    file.copy(folder.data(), size);
    return flushFolder(folder.data());
}

// Behind what was done to the file.
void flushDone(const std::string& file) {
    if (const int error = flushOuterFolder(file))
        throw Unflushed(numberOfErrno(error), file, std::generic_category().message(error));
}

// A copy that is on the disk; the errno of what went wrong.
int copyThrough(const std::string& from, const std::string& to) {
    const Handle<FileDescriptor> in(open(from.c_str(), O_RDONLY | O_CLOEXEC));
    if (!in) return errno;
    Handle<FileDescriptor> out(open(to.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    if (!out) return errno;
    takeRights(out.get(), from);
    std::array<std::uint8_t, 65536> part{};
    for (std::uint64_t place = 0;;) {
        const ssize_t got = pread(in.get(), part.data(), part.size(), static_cast<off_t>(place));
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return errno;
        if (got == 0) break;
        if (const int error =
                writeAll(out.get(), std::span(part).first(static_cast<std::size_t>(got)), place))
            return error;
        place += static_cast<std::uint64_t>(got);
    }
    return fsync(out.get()) == 0 && close(out.release()) == 0 ? 0 : errno;
}

// Moves without ever replacing; the errno of what went wrong.
int moveToFree(const std::string& from, const std::string& to) {
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return 0;
    if (errno != EINVAL && errno != ENOSYS) return errno;
    // The file system has no such rename. Linking never replaces either; where no links are to be had, the
    // caller has seen that the new name is free.
    if (link(from.c_str(), to.c_str()) == 0) {
        if (unlink(from.c_str()) == 0) return 0;
        const int error = errno;
        unlink(to.c_str());
        return error;
    }
    if (errno == EEXIST) return errno;
    return rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

}  // namespace

int writeAll(int file, std::span<const std::uint8_t> content, std::uint64_t place) {
    while (!content.empty()) {
        const ssize_t written = pwrite(file, content.data(), content.size(), static_cast<off_t>(place));
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return written < 0 ? errno : ENOSPC;
        content = content.subspan(static_cast<std::size_t>(written));
        place += static_cast<std::uint64_t>(written);
    }
    return 0;
}

void takeRights(int file, const std::string& model) {
    struct stat rights {};
    if (stat(model.c_str(), &rights) != 0) return;
    mode_t mode = rights.st_mode & 07777;
    if (fchown(file, rights.st_uid, rights.st_gid) != 0 && fchown(file, gid_t(-1), rights.st_gid) != 0)
        mode &= ~mode_t{070} | (mode & 07) << 3;  // another group has what everybody has
    // A file system without modes keeps what it has.
    if (fchmod(file, mode) != 0) return;
}

const char kSeparator = '/';

std::string folderOf(const std::string& path) {
    return fromPath(toPath(path).parent_path());
}

std::string nameOf(const std::string& path) {
    return fromPath(toPath(path).filename());
}

EntryKind entryKind(const std::string& path) {
    struct stat state {};
    if (stat(path.c_str(), &state) != 0) return EntryKind::None;
    if (S_ISDIR(state.st_mode)) return EntryKind::Folder;
    return S_ISREG(state.st_mode) ? EntryKind::File : EntryKind::Other;
}

bool isStillToCome(const std::string& folder) {
    struct stat state {};
    return stat(folder.c_str(), &state) != 0 && errno == ENOENT;
}

std::uint64_t fileSize(const std::string& file, std::error_code& error) {
    struct stat state {};
    error = stat(file.c_str(), &state) == 0 ? std::error_code() : systemError(errno);
    return static_cast<std::uint64_t>(state.st_size);
}

std::chrono::system_clock::time_point fileTime(const std::string& file, std::error_code& error) {
    struct stat state {};
    error = stat(file.c_str(), &state) == 0 ? std::error_code() : systemError(errno);
    return std::chrono::system_clock::time_point(
        std::chrono::duration_cast<std::chrono::system_clock::duration>(
            std::chrono::seconds(state.st_mtim.tv_sec) + std::chrono::nanoseconds(state.st_mtim.tv_nsec)));
}

std::vector<std::string> namesIn(const std::string& folder, std::error_code& error) {
    std::vector<std::string> names;
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(opendir(folder.empty() ? "." : folder.c_str()),
                                                      closedir);
    error = entries ? std::error_code() : systemError(errno);
    while (entries) {
        errno = 0;
        const dirent* entry = readdir(entries.get());
        if (!entry) {
            if (errno != 0) error = systemError(errno);
            break;
        }
        std::string name = entry->d_name;
        if (name != "." && name != "..") names.push_back(std::move(name));
    }
    return names;
}

void makeFolders(const std::string& folder, std::error_code& error) {
    error.clear();
    if (folder.empty() || entryKind(folder) == EntryKind::Folder) return;
    const std::string outer = folderOf(folder);
    if (!outer.empty() && outer != folder) makeFolders(outer, error);
    if (error || nameOf(folder).empty()) return;
    if (mkdir(folder.c_str(), 0777) != 0)
        error = errno != EEXIST                          ? systemError(errno)
                : entryKind(folder) == EntryKind::Folder ? std::error_code()
                                                         : systemError(ENOTDIR);
    else if (const int unflushed = flushFolder(outer.c_str()))
        error = systemError(unflushed);
}

void flushFolderOf(const std::string& file) {
    if (const int error = flushOuterFolder(file))
        throw systemFailure(error, "Cannot bring to the disk the name of", file);
}

std::string linkedFile(const std::string& file) {
    std::string path = file;
    for (int links = 0; links < 40; ++links) {
        std::array<char, 4096> target{};
        const ssize_t size = readlink(path.c_str(), target.data(), target.size());
        if (size < 0) return path;
        path =
            fromPath(toPath(path).parent_path() / std::string(target.data(), static_cast<std::size_t>(size)));
    }
    throw systemFailure(ELOOP, "Cannot write", file);
}

bool isReadOnly(const std::string& file) {
    struct stat state {};
    if (stat(file.c_str(), &state) != 0) return false;
    return (state.st_mode & 0222) == 0 || (access(file.c_str(), W_OK) != 0 && errno != ENOENT);
}

void removeFile(const std::string& file) {
    unlink(file.c_str());
}

void removeFolder(const std::string& folder) {
    rmdir(folder.c_str());
}

void giveRights(const std::string& path, const std::string& model) {
    const Handle<FileDescriptor> file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (file) takeRights(file.get(), model);
}

FilePtr openFile(const std::string& file, OpenFor purpose) {
    constexpr const char* kModes[] = {"rb", "wb", "ab"};
    return FilePtr(std::fopen(file.c_str(), kModes[static_cast<int>(purpose)]));
}

void writeThrough(const std::string& file, std::span<const std::uint8_t> content,
                  const std::string& reported) {
    const auto failure = [&](int error) { return systemFailure(error, "Cannot write", reported); };
    Handle<FileDescriptor> handle(open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    if (!handle) throw failure(errno);
    takeRights(handle.get(), reported);
    if (const int error = writeAll(handle.get(), content, 0)) throw failure(error);
    if (fsync(handle.get()) != 0 || close(handle.release()) != 0) throw failure(errno);
}

void keepSecond(const std::string& file, const std::string& second) {
    if (link(file.c_str(), second.c_str()) == 0) return;
    if (errno == EEXIST) throw systemFailure(errno, kKeeping, file);
    const std::string part = second + kUnfinished;
    int error = copyThrough(file, part);
    if (error == 0 && rename(part.c_str(), second.c_str()) != 0) error = errno;
    if (error == 0) return;
    unlink(part.c_str());
    throw systemFailure(error, kKeeping, file);
}

void replaceFile(const std::string& from, const std::string& to, const std::string& backup,
                 const std::string& second) {
    const bool keeps = !backup.empty() && fileExists(to);
    const bool isElsewhere = keeps && folderOf(backup) != folderOf(to);
    // A second name for the previous version, so that its own name never goes; a copy where links are not to
    // be had. It becomes the backup when all else is done, so that a failure leaves the older backup.
    if (keeps) keepSecond(to, second);
    if (rename(from.c_str(), to.c_str()) != 0) {
        const int error = errno;
        unlink(second.c_str());
        throw systemFailure(error, "Cannot write", to);
    }
    if (keeps && rename(second.c_str(), backup.c_str()) != 0) {
        const Failure failure = systemFailure(errno, kKeeping, to);
        if (rename(second.c_str(), to.c_str()) != 0 && copyThrough(second, from) == 0 &&
            rename(from.c_str(), to.c_str()) == 0)
            unlink(second.c_str());
        throw failure;
    }
    // Renaming does nothing where both are names of one file already.
    if (keeps) unlink(second.c_str());
    flushDone(to);
    if (isElsewhere) flushDone(backup);
}

void moveFile(const std::string& from, const std::string& to, IfTaken ifTaken, const std::string& what) {
    const bool isElsewhere = folderOf(from) != folderOf(to);
    const int error = ifTaken == IfTaken::Refuse              ? moveToFree(from, to)
                      : rename(from.c_str(), to.c_str()) == 0 ? 0
                                                              : errno;
    if (error != 0) throw systemFailure(error, what, error == EEXIST ? to : from);
    flushDone(to);
    if (isElsewhere) flushDone(from);
}

unsigned long processNumber() {
    return static_cast<unsigned long>(getpid());
}

bool processRuns(unsigned long number) {
    return kill(static_cast<pid_t>(number), 0) == 0 || errno == EPERM;
}

Failure systemFailure(int error, const std::string& what, const std::string& file) {
    return fileFailure(numberOfErrno(error == EDQUOT ? ENOSPC : error), what, file,
                       std::generic_category().message(error));
}

}  // namespace dravik
