#include "windows/control/support/FaultyDisk.h"

#include <cstring>
#include <mutex>
#include <utility>

namespace dravik::test {
namespace {

std::mutex mutex;
struct State {
    std::wstring folder;  // "" while nobody watches
    long counted = 0;
    long at = 0;
    FaultyDisk::Kind kind = FaultyDisk::Kind::Fails;
    DWORD error = 0;
    bool isDead = false;
};
State state;

enum class Verdict { Go, Half, Fail };

// Of an operation on a path, or on a file that is open: the library writes to none outside of the folder.
Verdict judged(const wchar_t* path = nullptr) {
    const std::scoped_lock lock(mutex);
    if (state.folder.empty() || (path && !std::wstring_view(path).starts_with(state.folder)))
        return Verdict::Go;
    const bool wasDead = state.isDead;
    if (!wasDead && ++state.counted != state.at) return Verdict::Go;
    state.isDead = state.kind != FaultyDisk::Kind::Fails;
    SetLastError(state.error);
    return !wasDead && state.kind == FaultyDisk::Kind::DiesHalfWay ? Verdict::Half : Verdict::Fail;
}

bool goes(const wchar_t* path = nullptr) {
    return judged(path) == Verdict::Go;
}

HANDLE WINAPI createFile(LPCWSTR name, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security, DWORD how,
                         DWORD flags, HANDLE model) {
    if ((access & GENERIC_WRITE) != 0 && !goes(name)) return INVALID_HANDLE_VALUE;
    return CreateFileW(name, access, share, security, how, flags, model);
}
BOOL WINAPI writeFile(HANDLE file, LPCVOID bytes, DWORD size, LPDWORD written, LPOVERLAPPED place) {
    const Verdict verdict = judged();
    if (verdict == Verdict::Go) return WriteFile(file, bytes, size, written, place);
    if (verdict == Verdict::Half) WriteFile(file, bytes, size / 2, written, place);
    SetLastError(state.error);
    return FALSE;
}
BOOL WINAPI flushFileBuffers(HANDLE file) {
    return goes() && FlushFileBuffers(file);
}
BOOL WINAPI setEndOfFile(HANDLE file) {
    return goes() && SetEndOfFile(file);
}
BOOL WINAPI moveFileEx(LPCWSTR from, LPCWSTR to, DWORD flags) {
    return goes(to) && MoveFileExW(from, to, flags);
}
BOOL WINAPI replaceFile(LPCWSTR to, LPCWSTR from, LPCWSTR backup, DWORD flags, LPVOID more, LPVOID reserved) {
    return goes(to) && ReplaceFileW(to, from, backup, flags, more, reserved);
}
BOOL WINAPI deleteFile(LPCWSTR name) {
    return goes(name) && DeleteFileW(name);
}
BOOL WINAPI createHardLink(LPCWSTR link, LPCWSTR name, LPSECURITY_ATTRIBUTES security) {
    return goes(link) && CreateHardLinkW(link, name, security);
}
BOOL WINAPI copyFile(LPCWSTR from, LPCWSTR to, BOOL refuses) {
    return goes(to) && CopyFileW(from, to, refuses);
}
BOOL WINAPI createDirectory(LPCWSTR name, LPSECURITY_ATTRIBUTES security) {
    return goes(name) && CreateDirectoryW(name, security);
}
BOOL WINAPI lockFileEx(HANDLE file, DWORD flags, DWORD reserved, DWORD low, DWORD high, LPOVERLAPPED place) {
    return goes() && LockFileEx(file, flags, reserved, low, high, place);
}

// An imported function and what takes its place.
const std::pair<const char*, void*> kRedirections[] = {
    {"CreateFileW", reinterpret_cast<void*>(createFile)},
    {"WriteFile", reinterpret_cast<void*>(writeFile)},
    {"FlushFileBuffers", reinterpret_cast<void*>(flushFileBuffers)},
    {"SetEndOfFile", reinterpret_cast<void*>(setEndOfFile)},
    {"MoveFileExW", reinterpret_cast<void*>(moveFileEx)},
    {"ReplaceFileW", reinterpret_cast<void*>(replaceFile)},
    {"DeleteFileW", reinterpret_cast<void*>(deleteFile)},
    {"CreateHardLinkW", reinterpret_cast<void*>(createHardLink)},
    {"CopyFileW", reinterpret_cast<void*>(copyFile)},
    {"CreateDirectoryW", reinterpret_cast<void*>(createDirectory)},
    {"LockFileEx", reinterpret_cast<void*>(lockFileEx)},
};

// Once for as long as the library is loaded: what nobody watches goes through.
void redirect(HMODULE module) {
    auto* base = reinterpret_cast<std::uint8_t*>(module);
    const auto* head = reinterpret_cast<const IMAGE_NT_HEADERS*>(
        base + reinterpret_cast<const IMAGE_DOS_HEADER*>(base)->e_lfanew);
    const auto place = head->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    for (auto* library = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + place); library->Name;
         ++library) {
        auto* name = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + library->OriginalFirstThunk);
        auto* entry = reinterpret_cast<IMAGE_THUNK_DATA*>(base + library->FirstThunk);
        for (; name->u1.AddressOfData; ++name, ++entry) {
            if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
            const auto* imported =
                reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + name->u1.AddressOfData);
            for (const auto& [function, replacement] : kRedirections) {
                if (std::strcmp(reinterpret_cast<const char*>(imported->Name), function) != 0) continue;
                DWORD before = 0;
                VirtualProtect(entry, sizeof *entry, PAGE_READWRITE, &before);
                entry->u1.Function = reinterpret_cast<ULONG_PTR>(replacement);
                VirtualProtect(entry, sizeof *entry, before, &before);
            }
        }
    }
}

}  // namespace

FaultyDisk::FaultyDisk(HMODULE module, std::wstring folder, long at, Kind kind, DWORD error) {
    static HMODULE redirected = nullptr;
    if (std::exchange(redirected, module) != module) redirect(module);
    const std::scoped_lock lock(mutex);
    state = {std::move(folder), 0, at, kind, error};
}

FaultyDisk::~FaultyDisk() {
    const std::scoped_lock lock(mutex);
    state = {};
}

long FaultyDisk::operations() const {
    const std::scoped_lock lock(mutex);
    return state.counted;
}

}  // namespace dravik::test
