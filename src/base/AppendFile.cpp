#include "base/AppendFile.h"

#include "base/FileSystem.h"
#include "base/GrowingFile.h"

namespace dravik {
namespace {

constexpr char kWriting[] = "Cannot write";

}  // namespace

struct AppendFile::Open {
    std::string name;
    std::unique_ptr<GrowingFile> file;
    std::uint64_t size = 0;
    bool isTorn = false;  // bytes behind `size` could not be cut off
    int flushFailure = 0;

    Failure failure(int error) const { return systemFailure(error, kWriting, name); }
    void cut() {
        const int error = file->cut(size);
        isTorn = error != 0;
        if (isTorn) throw failure(error);
    }
};

AppendFile::AppendFile(const std::string& file, std::uint64_t size, const std::string& rightsOf)
    : open_(std::make_unique<Open>()) {
    makeFolderOf(file);
    open_->name = file;
    open_->size = size;
    open_->file = GrowingFile::open(file, rightsOf);
    const std::uint64_t there = open_->file->size();
    if (there < size)
        throw fileFailure(RuntimeError::DeviceIoError, kWriting, file, "it is shorter than it was");
    if (there > size) open_->cut();
}

AppendFile::AppendFile(AppendFile&&) noexcept = default;
AppendFile& AppendFile::operator=(AppendFile&&) noexcept = default;
AppendFile::~AppendFile() = default;

void AppendFile::append(std::span<const std::uint8_t> bytes) {
    if (open_->isTorn) open_->cut();
    if (const int error = open_->file->write(bytes, open_->size)) {
        open_->isTorn = open_->file->cut(open_->size) != 0;
        throw open_->failure(error);
    }
    open_->size += bytes.size();
}

void AppendFile::cutBack(std::uint64_t size) {
    open_->size = size;
    open_->cut();
}

void AppendFile::flush() {
    if (open_->flushFailure == 0) open_->flushFailure = open_->file->flush();
    if (open_->flushFailure != 0) throw open_->failure(open_->flushFailure);
}

std::uint64_t AppendFile::size() const noexcept {
    return open_->size;
}

}  // namespace dravik
