#include <utility>

#include "base/AppendFile.h"
#include "base/FileSystem.h"
#include "base/Utf.h"
#include "base/WindowsFile.h"

namespace dravik {
namespace {

constexpr char kWriting[] = "Cannot write";

Handle<FileObject> opened(const std::string& file, DWORD disposition) {
    return Handle<FileObject>(CreateFileW(wide(file).c_str(), GENERIC_WRITE,
                                          FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                          disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

}  // namespace

struct AppendFile::Open {
    std::string name;
    Handle<FileObject> file;
    // The system lets the calls of one handle wait for each other, so that a flush has its own.
    Handle<FileObject> flushed;
    std::uint64_t size = 0;
    bool isTorn = false;  // bytes behind `size` could not be cut off
    int flushFailure = 0;

    Failure failure(int error) const { return systemFailure(error, kWriting, name); }
    int cut() {
        const int error = movePointer(file.get(), size) && SetEndOfFile(file.get()) ? 0 : lastError();
        isTorn = error != 0;
        return error;
    }
};

AppendFile::AppendFile(const std::string& file, std::uint64_t size, const std::string&)
    : open_(std::make_unique<Open>()) {
    open_->name = file;
    open_->size = size;
    makeFolderOf(file);
    open_->file = opened(file, OPEN_ALWAYS);
    if (!open_->file) throw open_->failure(lastError());
    open_->flushed = opened(file, OPEN_EXISTING);
    if (!open_->flushed) throw open_->failure(lastError());

    LARGE_INTEGER there{};
    if (!GetFileSizeEx(open_->file.get(), &there)) throw open_->failure(lastError());
    if (static_cast<std::uint64_t>(there.QuadPart) < size)
        throw fileFailure(RuntimeError::DeviceIoError, kWriting, file, "it is shorter than it was");
    if (const int error = open_->cut()) throw open_->failure(error);
}

AppendFile::AppendFile(AppendFile&&) noexcept = default;
AppendFile& AppendFile::operator=(AppendFile&&) noexcept = default;
AppendFile::~AppendFile() = default;

void AppendFile::append(std::span<const std::uint8_t> bytes) {
    if (open_->isTorn)
        if (const int error = open_->cut()) throw open_->failure(error);
    if (!movePointer(open_->file.get(), open_->size) || !writeAll(open_->file.get(), bytes)) {
        const int error = lastError();
        open_->cut();
        throw open_->failure(error);
    }
    open_->size += bytes.size();
}

void AppendFile::flush() {
    if (open_->flushFailure == 0 && !FlushFileBuffers(open_->flushed.get()))
        open_->flushFailure = lastError();
    if (open_->flushFailure != 0) throw open_->failure(open_->flushFailure);
}

std::uint64_t AppendFile::size() const noexcept {
    return open_->size;
}

}  // namespace dravik
