#include "base/OutputFile.h"

#include <cerrno>

#include "base/Failure.h"
#include "base/Paths.h"

namespace dravik {
namespace {

[[noreturn]] void fail(int error) {
    switch (error) {
        case ENOENT:
            throw Failure(RuntimeError::PathNotFound);
        case EACCES:
        case EROFS:
            throw Failure(RuntimeError::PermissionDenied);
        case ENOSPC:
            throw Failure(RuntimeError::DiskFull);
        default:
            throw Failure(RuntimeError::PathFileAccessError);
    }
}

std::FILE* opened(const std::string& file, bool atEnd) {
#ifdef _WIN32
    return _wfopen(wideName(file).c_str(), atEnd ? L"ab" : L"wb");
#else
    return std::fopen(file.c_str(), atEnd ? "ab" : "wb");
#endif
}

}  // namespace

OutputFile::OutputFile(const std::string& file, Start start) : file_(opened(file, start == Start::AtEnd)) {
    if (!file_) fail(errno);
}

void OutputFile::write(std::string_view text) {
    if (std::fwrite(text.data(), 1, text.size(), file_.get()) != text.size()) fail(errno);
}

void OutputFile::close() {
    if (std::fclose(file_.release()) != 0) fail(errno);
}

}  // namespace dravik
