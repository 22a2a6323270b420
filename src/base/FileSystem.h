// What the system does with files and folders, each operation once for POSIX and once for Windows. Names are
// UTF-8. Windows is asked directly: the standard library's own way brings its streams and locales along, most
// of a megabyte.
#pragma once

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <system_error>
#include <vector>

#include "base/Failure.h"

namespace dravik {

// Between the names of a path that is made here.
extern const char kSeparator;
// The parts of a path: the folder without its last separator, and the name in it.
std::string folderOf(const std::string& path);
std::string nameOf(const std::string& path);

enum class EntryKind { None, File, Folder, Other };

// None as well where the system does not tell.
EntryKind entryKind(const std::string& path);
// True when there is anything of that name.
bool fileExists(const std::string& file);
// True when there is no such folder, and nothing else in its way; a path that cannot be looked at is not.
bool isStillToCome(const std::string& folder);
std::uint64_t fileSize(const std::string& file, std::error_code& error);
// When it was last written.
std::chrono::system_clock::time_point fileTime(const std::string& file, std::error_code& error);
// The names in a folder, in no order; those until the error when there is one.
std::vector<std::string> namesIn(const std::string& folder, std::error_code& error);
// With the folders that it stands in, each of which is on the disk then.
void makeFolders(const std::string& folder, std::error_code& error);
// The folder that the file stands in, when it is missing; raises Failure that names the folder.
void makeFolderOf(const std::string& file);
// A new name, and one that was given anew, is on the disk once its folder is. Raises Device I/O error (57)
// and the like.
void flushFolderOf(const std::string& file);
// Raised by what was done all the same, but may not have reached the disk.
class Unflushed : public Failure {
  public:
    Unflushed(RuntimeError number, const std::string& file, const std::string& problem);
};
// Lets an operation go on behind steps that were done all the same, and tells of it at its end.
class FlushDoubt {
  public:
    template <class Step>
    void allow(Step step) {
        try {
            step();
        } catch (const Unflushed& doubt) {
            doubt_ = doubt;
        }
    }
    bool exists() const noexcept { return doubt_.has_value(); }
    void tell() const {
        if (doubt_) throw *doubt_;
    }

  private:
    std::optional<Unflushed> doubt_;
};
// The file that a symbolic link stands for in the end, which need not exist; else the file itself.
std::string linkedFile(const std::string& file);
// True when the file may not be written, whatever its folder allows.
bool isReadOnly(const std::string& file);
void removeFile(const std::string& file);
// One that is empty.
void removeFolder(const std::string& folder);
// Gives a file or folder mode and group of another, as far as the system lets it.
void giveRights(const std::string& path, const std::string& model);

enum class OpenFor { Reading, Writing, Appending };

struct FileCloser {
    void operator()(std::FILE* file) const noexcept { std::fclose(file); }
};
using FilePtr = std::unique_ptr<std::FILE, FileCloser>;

// A file of the C library; null with errno set.
FilePtr openFile(const std::string& file, OpenFor purpose);

// Makes a file that is not there yet, with the rights of the file `reported` when that exists; its content is
// on the disk when this returns. Failures name `reported`.
void writeThrough(const std::string& file, std::span<const std::uint8_t> content,
                  const std::string& reported);
// Behind the name of a copy that is not whole yet.
inline constexpr char kUnfinished[] = ".part";
// A second name, which must be free, for the file; a copy that is on the disk where that is not to be had.
void keepSecond(const std::string& file, const std::string& second);
// Puts the file `from` in the place of `to`, whose name is there all the time; what it named before is called
// `backup` then, unless that is empty. A failure leaves both as they were, unless it is Unflushed. `second`
// names the previous version meanwhile, in the folder of the backup.
void replaceFile(const std::string& from, const std::string& to, const std::string& backup,
                 const std::string& second);
// `what` is what failures say of the operation, but for Unflushed.
enum class IfTaken { Refuse, Replace };
void moveFile(const std::string& from, const std::string& to, IfTaken ifTaken, const std::string& what);

unsigned long processNumber();
// True as well when the system does not tell.
bool processRuns(unsigned long number);

// The number of a failure that the C library reports in errno.
RuntimeError numberOfErrno(int error);
// The failure with that number which says: WHAT "FILE": PROBLEM.
Failure fileFailure(RuntimeError number, const std::string& what, const std::string& file,
                    const std::string& problem);
// As the system reports it: GetLastError() on Windows, errno elsewhere.
Failure systemFailure(int error, const std::string& what, const std::string& file);

}  // namespace dravik
