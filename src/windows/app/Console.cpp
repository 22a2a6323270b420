#include "windows/app/Console.h"

#include <cstdio>
#include <iostream>

namespace dravik::app {
namespace {

bool isRedirected(DWORD which) {
    const HANDLE handle = GetStdHandle(which);
    return handle && handle != INVALID_HANDLE_VALUE && GetFileType(handle) != FILE_TYPE_UNKNOWN;
}

}  // namespace

void useCallersConsole() {
    const bool outGoesSomewhere = isRedirected(STD_OUTPUT_HANDLE);
    const bool errGoesSomewhere = isRedirected(STD_ERROR_HANDLE);
    if (outGoesSomewhere && errGoesSomewhere) return;
    if (!AttachConsole(ATTACH_PARENT_PROCESS)) return;
    SetConsoleOutputCP(CP_UTF8);
    if (!outGoesSomewhere && std::freopen("CONOUT$", "w", stdout)) std::cout.clear();
    if (!errGoesSomewhere && std::freopen("CONOUT$", "w", stderr)) std::cerr.clear();
}

bool errIsConsole() {
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), &mode) != FALSE;
}

}  // namespace dravik::app
