#include "base/AtomicFile.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <system_error>

#include "base/Failure.h"

namespace dravik {
namespace {

constexpr std::string_view kTemporary = ".tmp-";

std::string temporaryOf(const std::string& file) {
    static std::atomic<unsigned> counter{0};
    return file + std::string(kTemporary) + std::to_string(processNumber()) + "-" + std::to_string(++counter);
}

// What saves of `file` that were killed have left behind as temporaries of `written`, a name beside it.
std::vector<std::string> leftoversOf(const std::string& written) {
    const std::string start = nameOf(written) + std::string(kTemporary);
    const std::string folder = written.substr(0, written.size() - nameOf(written).size());
    std::vector<std::string> leftovers;
    std::error_code error;
    for (const std::string& name : namesIn(folderOf(written), error)) {
        if (!name.starts_with(start)) continue;
        const unsigned long process = std::strtoul(name.c_str() + start.size(), nullptr, 10);
        if (process == processNumber() || !processRuns(process)) leftovers.push_back(folder + name);
    }
    return leftovers;
}

// A save that was killed before the new version took its place left nothing that counts; one that was killed
// behind that left the previous version, which still is to become the backup.
void clearLeftovers(const std::string& file, const std::string& target) {
    try {
        for (const std::string& leftover : leftoversOf(target)) removeFile(leftover);
        for (const std::string& leftover : leftoversOf(backupOf(file))) {
            if (!leftover.ends_with(kUnfinished) && !haveSameContent(leftover, target))
                moveFile(leftover, backupOf(file), IfTaken::Replace, "Cannot keep the previous version of");
            removeFile(leftover);
        }
    } catch (const std::exception&) {
        return;  // the save itself says what is wrong
    }
}

void checkExists(const std::string& file) {
    if (!fileExists(file)) throw Failure(RuntimeError::FileNotFound, "File not found: \"" + file + "\"");
}

}  // namespace

std::string backupOf(const std::string& file) {
    return file + ".bak";
}

void writeWholeFile(const std::string& file, std::span<const std::uint8_t> content, bool keepsBackup,
                    const FileCheck& check) {
    makeFolderOf(file);
    const std::string target = linkedFile(file);
    if (isReadOnly(target))
        throw fileFailure(RuntimeError::PermissionDenied, "Cannot write", file, "it is read-only");
    clearLeftovers(file, target);
    const std::string temporary = temporaryOf(target);
    try {
        writeThrough(temporary, content, target);
        if (check) check(temporary);
        replaceFile(temporary, target, keepsBackup ? backupOf(file) : std::string(),
                    temporaryOf(backupOf(file)));
    } catch (...) {
        removeFile(temporary);
        throw;
    }
}

std::vector<std::uint8_t> readWholeFile(const std::string& file, std::uint64_t most) {
    const auto failure = [&](RuntimeError number, const std::string& problem) {
        return fileFailure(number, "Cannot read", file, problem);
    };
    checkExists(file);
    if (entryKind(file) != EntryKind::File) throw failure(RuntimeError::PathFileAccessError, "it is no file");
    std::error_code error;
    const std::uint64_t size = fileSize(file, error);
    if (error) throw failure(RuntimeError::PathFileAccessError, error.message());
    if (size > most) throw failure(RuntimeError::OutOfMemory, "the file is too large");
    std::vector<std::uint8_t> content(static_cast<std::size_t>(size));
    const FilePtr stream = openFile(file, OpenFor::Reading);
    if (!stream) {
        const int cause = errno;
        throw failure(numberOfErrno(cause), std::generic_category().message(cause));
    }
    const std::size_t got = content.empty() ? 0 : std::fread(content.data(), 1, content.size(), stream.get());
    if (got != content.size()) throw failure(RuntimeError::DeviceIoError, "it ends early");
    return content;
}

bool haveSameContent(const std::string& a, const std::string& b) {
    std::error_code error;
    const std::uint64_t size = fileSize(a, error);
    return !error && fileSize(b, error) == size && !error && readWholeFile(a, size) == readWholeFile(b, size);
}

void renameFile(const std::string& from, const std::string& to) {
    checkExists(from);
    if (fileExists(to)) throw Failure(RuntimeError::FileAlreadyExists, "File already exists: \"" + to + "\"");
    moveFile(from, to, IfTaken::Refuse, "Cannot rename");
}

void retireFile(const std::string& file, bool becomesBackup) {
    checkExists(file);
    if (becomesBackup) {
        moveFile(file, backupOf(file), IfTaken::Replace, "Cannot delete");
        return;
    }
    removeFile(file);
    if (fileExists(file))
        throw fileFailure(RuntimeError::PermissionDenied, "Cannot delete", file, "access is denied");
    try {
        flushFolderOf(file);
    } catch (const Failure& failure) {
        throw Unflushed(static_cast<RuntimeError>(failure.number()), file, failure.description());
    }
}

}  // namespace dravik
