#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

#include "base/FileSystem.h"
#include "base/GrowingFile.h"
#include "base/PosixFile.h"

namespace dravik {
namespace {

constexpr char kWriting[] = "Cannot write";

class PosixGrowingFile : public GrowingFile {
  public:
    PosixGrowingFile(const std::string& name, const std::string& rightsOf) : name_(name) {
        constexpr int kFlags = O_WRONLY | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
        file_ = Handle<FileDescriptor>(::open(name.c_str(), kFlags | O_EXCL, 0666));
        const bool isNew = static_cast<bool>(file_);
        if (!isNew && errno == EEXIST) file_ = Handle<FileDescriptor>(::open(name.c_str(), kFlags, 0666));
        if (!file_) throw systemFailure(errno, kWriting, name);
        if (isNew) takeRights(file_.get(), rightsOf);
    }

    std::uint64_t size() override {
        struct stat state {};
        if (fstat(file_.get(), &state) != 0) throw systemFailure(errno, kWriting, name_);
        if (!S_ISREG(state.st_mode))
            throw fileFailure(RuntimeError::PathFileAccessError, kWriting, name_, "it is no file");
        return static_cast<std::uint64_t>(state.st_size);
    }
    int cut(std::uint64_t size) override {
        return ftruncate(file_.get(), static_cast<off_t>(size)) == 0 ? 0 : errno;
    }
    int write(std::span<const std::uint8_t> bytes, std::uint64_t place) override {
        return writeAll(file_.get(), bytes, place);
    }
    int flush() override {
        if (fdatasync(file_.get()) != 0) return errno;
        if (!nameIsFlushed_) flushFolderOf(name_);
        nameIsFlushed_ = true;
        return 0;
    }

  private:
    std::string name_;
    Handle<FileDescriptor> file_;
    bool nameIsFlushed_ = false;  // of a new file, in its folder
};

}  // namespace

std::unique_ptr<GrowingFile> GrowingFile::open(const std::string& file, const std::string& rightsOf) {
    return std::make_unique<PosixGrowingFile>(file, rightsOf);
}

}  // namespace dravik
