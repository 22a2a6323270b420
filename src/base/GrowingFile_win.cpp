#include "base/FileSystem.h"
#include "base/GrowingFile.h"
#include "base/Utf.h"
#include "base/WindowsFile.h"

namespace dravik {
namespace {

constexpr char kWriting[] = "Cannot write";

class WindowsGrowingFile : public GrowingFile {
  public:
    explicit WindowsGrowingFile(const std::string& name)
        : name_(name), file_(opened(OPEN_ALWAYS)), flushed_(opened(OPEN_EXISTING)) {}

    std::uint64_t size() override {
        LARGE_INTEGER size{};
        if (!GetFileSizeEx(file_.get(), &size)) throw systemFailure(lastError(), kWriting, name_);
        return static_cast<std::uint64_t>(size.QuadPart);
    }
    int cut(std::uint64_t size) override {
        return movePointer(file_.get(), size) && SetEndOfFile(file_.get()) ? 0 : lastError();
    }
    int write(std::span<const std::uint8_t> bytes, std::uint64_t place) override {
        return movePointer(file_.get(), place) && writeAll(file_.get(), bytes) ? 0 : lastError();
    }
    int flush() override { return FlushFileBuffers(flushed_.get()) ? 0 : lastError(); }

  private:
    Handle<FileObject> opened(DWORD disposition) const {
        Handle<FileObject> file(CreateFileW(wide(name_).c_str(), GENERIC_WRITE,
                                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                            disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
        if (!file) throw systemFailure(lastError(), kWriting, name_);
        return file;
    }

    std::string name_;
    Handle<FileObject> file_;
    // The system lets the calls of one handle wait for each other, so that a flush has its own.
    Handle<FileObject> flushed_;
};

}  // namespace

std::unique_ptr<GrowingFile> GrowingFile::open(const std::string& file, const std::string&) {
    return std::make_unique<WindowsGrowingFile>(file);
}

}  // namespace dravik
