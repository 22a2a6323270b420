#include "drivers/win32/ChildProcess.h"

#include <windows.h>

#include <stdexcept>
#include <thread>

namespace dravik::test {

namespace {

constexpr UINT kTookTooLong = 9999;

}  // namespace

Finished runProcess(const std::wstring& commandLine, unsigned long milliseconds) {
    SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    HANDLE readEnd = nullptr, writeEnd = nullptr;
    if (!CreatePipe(&readEnd, &writeEnd, &inherited, 0)) throw std::runtime_error("no pipe");
    SetHandleInformation(readEnd, HANDLE_FLAG_INHERIT, 0);
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdOutput = start.hStdError = writeEnd;
    PROCESS_INFORMATION process{};
    std::wstring writable = commandLine;
    const BOOL started = CreateProcessW(nullptr, writable.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                                        &start, &process);
    CloseHandle(writeEnd);
    if (!started) {
        CloseHandle(readEnd);
        throw std::runtime_error("the program does not start");
    }
    Finished result;
    std::thread reader([&] {
        char buffer[4096];
        DWORD count = 0;
        while (ReadFile(readEnd, buffer, sizeof buffer, &count, nullptr) && count > 0)
            result.output.append(buffer, count);
    });
    if (WaitForSingleObject(process.hProcess, milliseconds) != WAIT_OBJECT_0)
        TerminateProcess(process.hProcess, kTookTooLong);
    WaitForSingleObject(process.hProcess, INFINITE);
    reader.join();
    GetExitCodeProcess(process.hProcess, &result.code);
    CloseHandle(process.hProcess);
    CloseHandle(process.hThread);
    CloseHandle(readEnd);
    return result;
}

}  // namespace dravik::test
