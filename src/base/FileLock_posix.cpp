#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>
#include <utility>

#include "base/FileLock.h"
#include "base/FileSystem.h"
#include "base/PosixFile.h"
#include "base/TimeText.h"

namespace dravik {
namespace {

// Whether the name still is that of the open file: who held the lock before may just have taken the file
// away.
bool isStill(int file, const std::string& name) {
    struct stat open {
    }, named{};
    return fstat(file, &open) == 0 && stat(name.c_str(), &named) == 0 && open.st_dev == named.st_dev &&
           open.st_ino == named.st_ino;
}

std::string words() {
    std::string host(256, '\0');
    if (gethostname(host.data(), host.size() - 1) != 0) host.clear();
    return "process " + std::to_string(getpid()) + " on " + host.c_str() + " since " + localTimeText();
}

struct Held {
    std::string name;
    Handle<FileDescriptor> file;

    Held(std::string held, Handle<FileDescriptor> open) : name(std::move(held)), file(std::move(open)) {}
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    ~Held() {
        if (isStill(file.get(), name)) unlink(name.c_str());
    }
};

}  // namespace

std::optional<FileLock> FileLock::take(const std::string& name) {
    const auto failure = [&](int error) { return systemFailure(error, "Cannot lock", name); };
    makeFolderOf(name);
    constexpr int kFlags = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    for (;;) {
        Handle<FileDescriptor> file(open(name.c_str(), O_RDWR | O_CREAT | kFlags, 0666));
        // What another account left behind can be locked, but not written to.
        const bool isForeign = !file && errno == EACCES;
        if (isForeign) {
            file = Handle<FileDescriptor>(open(name.c_str(), O_RDONLY | kFlags));
            if (!file && errno == ENOENT) throw failure(EACCES);
        }
        if (!file) throw failure(errno);
        if (flock(file.get(), LOCK_EX | LOCK_NB) != 0) {
            if (errno == EINTR) continue;
            if (errno != EWOULDBLOCK) throw failure(errno);
            return std::nullopt;
        }
        if (!isStill(file.get(), name)) continue;
        if (isForeign) {
            if (unlink(name.c_str()) != 0) throw failure(errno);
            continue;
        }
        const std::string text = words();
        const std::span bytes(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
        // The text is for the one who is refused; the lock holds without it, on a full disk too.
        if (ftruncate(file.get(), 0) == 0) writeAll(file.get(), bytes, 0);
        return FileLock(std::make_shared<Held>(name, std::move(file)));
    }
}

}  // namespace dravik
