// Loaded before a program's libraries, makes one of its operations on files fail, or kills it there.
// Operations on what lies in DRAVIK_FAULT_FOLDER are counted from 1; DRAVIK_FAULT_AT is the one that fails,
// DRAVIK_FAULT_KIND how:
//   an errno by its name;  "full": no room from there on;  "short": half of a write is done;
//   "kill": ended just before;  "half": ended behind half of a write.
// DRAVIK_FAULT_LOG is a file that gets a line for each operation; DRAVIK_FAULT_NO_LINKS is a file system
// without links.
#include <dirent.h>
#include <dlfcn.h>
#include <errno.h>
#include <fcntl.h>
#include <signal.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>

namespace {

constexpr int kFiles = 4096;
std::atomic<bool> watched[kFiles];
std::atomic<long> counted{0};

const char* setting(const char* name) {
    const char* value = getenv(name);
    return value ? value : "";
}

bool isWatched(const char* path) {
    const char* folder = setting("DRAVIK_FAULT_FOLDER");
    return path && *folder && strncmp(path, folder, strlen(folder)) == 0;
}

bool isWatched(int file) {
    return file >= 0 && file < kFiles && watched[file];
}

void watch(int file, bool watches) {
    if (file >= 0 && file < kFiles) watched[file] = watches;
}

enum class Room { NotNeeded, Needed };
enum class Verdict { Go, Fail, Half, HalfAndEnd };

[[noreturn]] void end() {
    syscall(SYS_kill, getpid(), SIGKILL);
    for (;;) pause();
}

int errnoNamed(const char* name) {
    constexpr struct {
        const char* name;
        int number;
    } kNames[] = {
        {"EIO", EIO}, {"ENOSPC", ENOSPC}, {"EACCES", EACCES}, {"EMFILE", EMFILE}, {"ENOLCK", ENOLCK}};
    for (const auto& one : kNames)
        if (strcmp(one.name, name) == 0) return one.number;
    return EIO;
}

// Counts an operation and says what becomes of it; sets errno when that is to fail.
Verdict judged(const char* operation, const char* subject, Room room) {
    const long number = ++counted;
    if (const char* log = setting("DRAVIK_FAULT_LOG"); *log) {
        char line[1024];
        const int size = snprintf(line, sizeof line, "%ld %s %s\n", number, operation, subject);
        const int file = static_cast<int>(
            syscall(SYS_openat, AT_FDCWD, log, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666));
        if (file >= 0 && size > 0) syscall(SYS_write, file, line, static_cast<size_t>(size));
        syscall(SYS_close, file);
    }
    const long at = atol(setting("DRAVIK_FAULT_AT"));
    const char* kind = setting("DRAVIK_FAULT_KIND");
    if (at == 0 || number < at) return Verdict::Go;
    if (strcmp(kind, "full") == 0 && room == Room::Needed) {
        errno = ENOSPC;
        return Verdict::Fail;
    }
    if (number > at || strcmp(kind, "full") == 0) return Verdict::Go;
    if (strcmp(kind, "kill") == 0) end();
    if (strcmp(kind, "half") == 0) return Verdict::HalfAndEnd;
    if (strcmp(kind, "short") == 0) return Verdict::Half;
    errno = errnoNamed(kind);
    return Verdict::Fail;
}

bool fails(const char* operation, const char* subject, Room room = Room::NotNeeded) {
    return judged(operation, subject, room) == Verdict::Fail;
}

template <class Function>
Function* original(Function*, const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

template <class Write>
ssize_t written(const char* operation, int file, size_t size, Write write) {
    if (!isWatched(file)) return write(size);
    const Verdict verdict = judged(operation, "", Room::Needed);
    if (verdict == Verdict::Fail) return -1;
    if (verdict == Verdict::Half) return write(size / 2 > 0 ? size / 2 : size);
    if (verdict == Verdict::Go) return write(size);
    write(size / 2);
    end();
}

int opened(const char* operation, const char* path, int flags, unsigned mode) {
    const bool isOurs = isWatched(path);
    const bool makes = flags & O_CREAT;
    if (isOurs && fails(makes ? "create" : operation, path, makes ? Room::Needed : Room::NotNeeded))
        return -1;
    const int file = static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
    watch(file, isOurs);
    return file;
}

bool refusesLink(const char* to) {
    if (!*setting("DRAVIK_FAULT_NO_LINKS") || !isWatched(to)) return false;
    errno = EPERM;
    return true;
}

}  // namespace

#define ORIGINAL(name) static const auto next = original(&name, #name)

extern "C" {

int open(const char* path, int flags, ...) {
    va_list more;
    va_start(more, flags);
    const unsigned mode = va_arg(more, unsigned);
    va_end(more);
    return opened("open", path, flags, mode);
}

FILE* fopen(const char* path, const char* mode) {
    ORIGINAL(fopen);
    if (isWatched(path) && fails("fopen", path)) return nullptr;
    return next(path, mode);
}

DIR* opendir(const char* path) {
    ORIGINAL(opendir);
    if (isWatched(path) && fails("opendir", path)) return nullptr;
    return next(path);
}

ssize_t write(int file, const void* bytes, size_t size) {
    return written("write", file, size,
                   [&](size_t part) { return static_cast<ssize_t>(syscall(SYS_write, file, bytes, part)); });
}

ssize_t pwrite(int file, const void* bytes, size_t size, off_t place) {
    return written("write", file, size, [&](size_t part) {
        return static_cast<ssize_t>(syscall(SYS_pwrite64, file, bytes, part, place));
    });
}

int fsync(int file) {
    if (isWatched(file) && fails("fsync", "")) return -1;
    return static_cast<int>(syscall(SYS_fsync, file));
}

int fdatasync(int file) {
    if (isWatched(file) && fails("fsync", "data")) return -1;
    return static_cast<int>(syscall(SYS_fdatasync, file));
}

int ftruncate(int file, off_t size) noexcept {
    if (isWatched(file) && fails("ftruncate", "")) return -1;
    return static_cast<int>(syscall(SYS_ftruncate, file, size));
}

// Where files have 64 bits anyway, these are the same.
static_assert(sizeof(off_t) == sizeof(off64_t));
int open64(const char* path, int flags, ...) __attribute__((alias("open")));
FILE* fopen64(const char* path, const char* mode) __attribute__((alias("fopen")));
ssize_t pwrite64(int file, const void* bytes, size_t size, off64_t place) __attribute__((alias("pwrite")));
int ftruncate64(int file, off64_t size) noexcept __attribute__((alias("ftruncate")));

// The descriptor is gone whatever close() says.
int close(int file) {
    const bool isOurs = isWatched(file);
    watch(file, false);
    const int result = static_cast<int>(syscall(SYS_close, file));
    return isOurs && fails("close", "") ? -1 : result;
}

int flock(int file, int operation) noexcept {
    if (isWatched(file) && fails("flock", "")) return -1;
    return static_cast<int>(syscall(SYS_flock, file, operation));
}

int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) noexcept {
    if (refusesLink(to) || (isWatched(to) && fails("link", to, Room::Needed))) return -1;
    return static_cast<int>(syscall(SYS_linkat, fromFolder, from, toFolder, to, flags));
}

int link(const char* from, const char* to) noexcept {
    return linkat(AT_FDCWD, from, AT_FDCWD, to, 0);
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) noexcept {
    if (*setting("DRAVIK_FAULT_NO_LINKS") && flags != 0 && isWatched(to)) {
        errno = EINVAL;
        return -1;
    }
    if (isWatched(to) && fails("rename", to)) return -1;
    return static_cast<int>(syscall(SYS_renameat2, fromFolder, from, toFolder, to, flags));
}

int rename(const char* from, const char* to) noexcept {
    return renameat2(AT_FDCWD, from, AT_FDCWD, to, 0);
}

int unlink(const char* path) noexcept {
    if (isWatched(path) && fails("unlink", path)) return -1;
    return static_cast<int>(syscall(SYS_unlinkat, AT_FDCWD, path, 0));
}

int mkdir(const char* path, mode_t mode) noexcept {
    if (isWatched(path) && fails("mkdir", path, Room::Needed)) return -1;
    return static_cast<int>(syscall(SYS_mkdirat, AT_FDCWD, path, mode));
}

int rmdir(const char* path) noexcept {
    if (isWatched(path) && fails("rmdir", path)) return -1;
    return static_cast<int>(syscall(SYS_unlinkat, AT_FDCWD, path, AT_REMOVEDIR));
}
}
