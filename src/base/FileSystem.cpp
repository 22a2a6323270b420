#include "base/FileSystem.h"

#include <cerrno>

namespace dravik {

bool fileExists(const std::string& file) {
    return entryKind(file) != EntryKind::None;
}

void makeFolderOf(const std::string& file) {
    const std::string folder = folderOf(file);
    if (folder.empty() || entryKind(folder) == EntryKind::Folder) return;
    std::error_code error;
    makeFolders(folder, error);
    if (error) throw systemFailure(error.value(), "Cannot make folder", folder);
}

RuntimeError numberOfErrno(int error) {
    switch (error) {
        case ENOSPC:
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
}

Unflushed::Unflushed(RuntimeError number, const std::string& file, const std::string& problem)
    : Failure(
          number,
          "\"" + file +
              "\" was changed all the same, but may be as it was before if the power fails now: " + problem) {
}

Failure fileFailure(RuntimeError number, const std::string& what, const std::string& file,
                    const std::string& problem) {
    return Failure(number, what + " \"" + file + "\": " + problem);
}

}  // namespace dravik
