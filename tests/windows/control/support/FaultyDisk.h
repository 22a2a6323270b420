// Lets file operations of the control's library fail: those on what lies in one folder are counted from 1,
// and the chosen one fails, or none does anything from it on, as when the process dies there.
#pragma once

#include <windows.h>

#include <string>

namespace dravik::test {

class FaultyDisk {
  public:
    enum class Kind { Fails, Dies, DiesHalfWay };

    // Nothing fails at 0. One at a time.
    FaultyDisk(HMODULE module, std::wstring folder, long at, Kind kind, DWORD error);
    FaultyDisk(const FaultyDisk&) = delete;
    FaultyDisk& operator=(const FaultyDisk&) = delete;
    ~FaultyDisk();

    long operations() const;
};

}  // namespace dravik::test
