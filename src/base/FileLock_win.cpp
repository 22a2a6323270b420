#include <array>
#include <utility>

#include "base/FileLock.h"
#include "base/FileSystem.h"
#include "base/TimeText.h"
#include "base/Utf.h"
#include "base/WindowsFile.h"

namespace dravik {
namespace {

// The locked byte stands far behind the text, since a locked byte can be read by nobody else.
constexpr DWORD kPlaceHigh = 0x40000000;
constexpr int kAttempts = 50;
constexpr DWORD kPauseMs = 10;

std::string words() {
    std::array<wchar_t, 256> host{};
    DWORD size = static_cast<DWORD>(host.size());
    if (!GetComputerNameW(host.data(), &size)) size = 0;
    return "process " + std::to_string(GetCurrentProcessId()) + " on " + utf8({host.data(), size}) +
           " since " + localTimeText();
}

bool isBeingDeleted(HANDLE file) {
    FILE_STANDARD_INFO state{};
    return GetFileInformationByHandleEx(file, FileStandardInfo, &state, sizeof state) && state.DeletePending;
}

struct Held {
    std::string name;
    Handle<FileObject> file;

    Held(std::string held, Handle<FileObject> open) : name(std::move(held)), file(std::move(open)) {}
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    // The file goes with its last handle; who reads the words just now keeps it, which does no harm.
    ~Held() { removeFile(name); }
};

}  // namespace

std::optional<FileLock> FileLock::take(const std::string& name) {
    const auto failure = [&](int error) { return systemFailure(error, "Cannot lock", name); };
    makeFolderOf(name);
    for (int attempt = 1;; ++attempt) {
        Handle<FileObject> file(CreateFileW(wide(name).c_str(), GENERIC_READ | GENERIC_WRITE,
                                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                            OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
        if (!file) {
            // A file that its last holder is taking away cannot be opened until it is gone.
            if (GetLastError() != ERROR_ACCESS_DENIED || attempt == kAttempts) throw failure(lastError());
            Sleep(kPauseMs);
            continue;
        }
        OVERLAPPED place{};
        place.OffsetHigh = kPlaceHigh;
        if (!LockFileEx(file.get(), LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place)) {
            if (GetLastError() == ERROR_LOCK_VIOLATION || GetLastError() == ERROR_IO_PENDING)
                return std::nullopt;
            throw failure(lastError());
        }
        if (isBeingDeleted(file.get())) {
            file = Handle<FileObject>();
            if (attempt == kAttempts) throw failure(ERROR_ACCESS_DENIED);
            Sleep(kPauseMs);
            continue;
        }
        const std::string text = words();
        SetEndOfFile(file.get());
        writeAll(file.get(), {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
        return FileLock(std::make_shared<Held>(name, std::move(file)));
    }
}

}  // namespace dravik
