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

// What a save that was killed left behind.
void removeLeftovers(const std::string& file) noexcept {
    try {
        const std::string start = nameOf(file) + std::string(kTemporary);
        const std::string folder = file.substr(0, file.size() - nameOf(file).size());
        std::error_code error;
        for (const std::string& name : namesIn(folderOf(file), error)) {
            if (!name.starts_with(start)) continue;
            const unsigned long process = std::strtoul(name.c_str() + start.size(), nullptr, 10);
            if (process == processNumber() || !processRuns(process)) removeFile(folder + name);
        }
    } catch (const std::exception&) {
        return;
    }
}

void makeFolderOf(const std::string& file) {
    const std::string folder = folderOf(file);
    if (folder.empty() || entryKind(folder) == EntryKind::Folder) return;
    std::error_code error;
    makeFolders(folder, error);
    if (error) throw systemFailure(error.value(), "Cannot make folder", folder);
}

void checkExists(const std::string& file) {
    if (!fileExists(file)) throw Failure(RuntimeError::FileNotFound, "File not found: \"" + file + "\"");
}

}  // namespace

std::string backupOf(const std::string& file) {
    return file + ".bak";
}

void writeWholeFile(const std::string& file, std::span<const std::uint8_t> content, bool keepsBackup) {
    makeFolderOf(file);
    removeLeftovers(file);
    const std::string temporary = temporaryOf(file);
    try {
        writeThrough(temporary, content, file);
        replaceFile(temporary, file, keepsBackup ? backupOf(file) : std::string());
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
}

}  // namespace dravik
