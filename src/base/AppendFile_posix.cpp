#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <utility>

#include "base/AppendFile.h"
#include "base/FileSystem.h"
#include "base/PosixFile.h"

namespace dravik {
namespace {

constexpr char kWriting[] = "Cannot write";

}  // namespace

struct AppendFile::Open {
    std::string name;
    Handle<FileDescriptor> file;
    std::uint64_t size = 0;
    bool isTorn = false;         // bytes behind `size` could not be cut off
    bool nameIsFlushed = false;  // of a new file, in its folder
    int flushFailure = 0;

    Failure failure(int error) const { return systemFailure(error, kWriting, name); }
    int cut() {
        const int error = ftruncate(file.get(), static_cast<off_t>(size)) == 0 ? 0 : errno;
        isTorn = error != 0;
        return error;
    }
};

AppendFile::AppendFile(const std::string& file, std::uint64_t size, const std::string& rightsOf)
    : open_(std::make_unique<Open>()) {
    open_->name = file;
    open_->size = size;
    makeFolderOf(file);
    constexpr int kFlags = O_WRONLY | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    open_->file = Handle<FileDescriptor>(open(file.c_str(), kFlags | O_EXCL, 0666));
    const bool isNew = static_cast<bool>(open_->file);
    if (!isNew && errno == EEXIST) open_->file = Handle<FileDescriptor>(open(file.c_str(), kFlags, 0666));
    if (!open_->file) throw open_->failure(errno);
    if (isNew) takeRights(open_->file.get(), rightsOf);

    struct stat state {};
    if (fstat(open_->file.get(), &state) != 0) throw open_->failure(errno);
    if (!S_ISREG(state.st_mode))
        throw fileFailure(RuntimeError::PathFileAccessError, kWriting, file, "it is no file");
    if (static_cast<std::uint64_t>(state.st_size) < size)
        throw fileFailure(RuntimeError::DeviceIoError, kWriting, file, "it is shorter than it was");
    if (static_cast<std::uint64_t>(state.st_size) > size)
        if (const int error = open_->cut()) throw open_->failure(error);
}

AppendFile::AppendFile(AppendFile&&) noexcept = default;
AppendFile& AppendFile::operator=(AppendFile&&) noexcept = default;
AppendFile::~AppendFile() = default;

void AppendFile::append(std::span<const std::uint8_t> bytes) {
    if (open_->isTorn)
        if (const int error = open_->cut()) throw open_->failure(error);
    if (const int error = writeAll(open_->file.get(), bytes, open_->size)) {
        open_->cut();
        throw open_->failure(error);
    }
    open_->size += bytes.size();
}

void AppendFile::flush() {
    if (open_->flushFailure == 0 && fdatasync(open_->file.get()) != 0) open_->flushFailure = errno;
    if (open_->flushFailure != 0) throw open_->failure(open_->flushFailure);
    if (!open_->nameIsFlushed) flushFolderOf(open_->name);
    open_->nameIsFlushed = true;
}

std::uint64_t AppendFile::size() const noexcept {
    return open_->size;
}

}  // namespace dravik
