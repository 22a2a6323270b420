#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "base/FileSystem.h"
#include "base/Handle.h"
#include "base/Paths.h"

namespace dravik {
namespace {

namespace fs = std::filesystem;

struct FileDescriptor {
    using Value = int;
    static int none() noexcept { return -1; }
    static void close(int file) noexcept { ::close(file); }
};

// A rename is on the disk once its folder is; a file system that cannot flush a folder is trusted.
void flushFolder(const std::string& file) {
    const std::string folder = folderOf(file);
    const Handle<FileDescriptor> handle(
        open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (handle) fsync(handle.get());
}

}  // namespace

const char kSeparator = '/';

std::string folderOf(const std::string& path) {
    return fromPath(toPath(path).parent_path());
}

std::string nameOf(const std::string& path) {
    return fromPath(toPath(path).filename());
}

EntryKind entryKind(const std::string& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (!fs::exists(status)) return EntryKind::None;
    if (fs::is_directory(status)) return EntryKind::Folder;
    return fs::is_regular_file(status) ? EntryKind::File : EntryKind::Other;
}

std::uint64_t fileSize(const std::string& file, std::error_code& error) {
    return fs::file_size(file, error);
}

std::vector<std::string> namesIn(const std::string& folder, std::error_code& error) {
    std::vector<std::string> names;
    fs::directory_iterator entries(folder.empty() ? "." : folder, error);
    for (; !error && entries != fs::directory_iterator(); entries.increment(error))
        names.push_back(fromPath(entries->path().filename()));
    return names;
}

void makeFolders(const std::string& folder, std::error_code& error) {
    fs::create_directories(folder, error);
}

void removeFile(const std::string& file) {
    std::error_code ignored;
    fs::remove(file, ignored);
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
    while (!content.empty()) {
        const ssize_t written = write(handle.get(), content.data(), content.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) throw failure(errno);
        if (written == 0) throw failure(ENOSPC);
        content = content.subspan(static_cast<std::size_t>(written));
    }
    if (fsync(handle.get()) != 0 || close(handle.release()) != 0) throw failure(errno);
}

void replaceFile(const std::string& from, const std::string& to, const std::string& backup) {
    if (!backup.empty() && fileExists(to)) {
        // A second name for the previous version, so that its own name never goes; a copy where links are not
        // to be had.
        const std::string second = from + "b";
        std::error_code error;
        if (link(to.c_str(), second.c_str()) != 0) fs::copy_file(toPath(to), toPath(second), error);
        if (error || rename(second.c_str(), backup.c_str()) != 0) {
            const int cause = error ? error.value() : errno;
            unlink(second.c_str());
            throw systemFailure(cause, "Cannot keep the previous version of", to);
        }
        // Renaming does nothing where both are names of one file already: a save was killed between the
        // backup and the new version.
        unlink(second.c_str());
    }
    if (rename(from.c_str(), to.c_str()) != 0) throw systemFailure(errno, "Cannot write", to);
    flushFolder(to);
}

void moveFile(const std::string& from, const std::string& to, IfTaken ifTaken, const std::string& what) {
    // Linking never replaces. Where no links are to be had, the caller has seen that the new name is free.
    if (ifTaken == IfTaken::Refuse && link(from.c_str(), to.c_str()) == 0) {
        unlink(from.c_str());
    } else if (ifTaken == IfTaken::Refuse && errno == EEXIST) {
        throw systemFailure(EEXIST, what, to);
    } else if (rename(from.c_str(), to.c_str()) != 0) {
        throw systemFailure(errno, what, from);
    }
    flushFolder(to);
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
