// The control's file, which also holds the embedded step.
#pragma once

#include "base/Paths.h"

namespace dravik::test {

class ControlFile {
  public:
    ControlFile() : module_(LoadLibraryW(windowsPath(DRAVIK_CONTROL).c_str())) {}
    ~ControlFile() {
        if (module_) FreeLibrary(module_);
    }
    ControlFile(const ControlFile&) = delete;
    ControlFile& operator=(const ControlFile&) = delete;

    static std::wstring windowsPath(const std::string& path) {
        return std::filesystem::absolute(toPath(path)).make_preferred().wstring();
    }
    static bool isLoaded() { return GetModuleHandleW(L"DravikDlg.ocx") != nullptr; }
    template <typename Function>
    Function* find(const char* name) const {
        return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
    }
    // Calls an export without arguments.
    HRESULT operator()(const char* name) const { return find<HRESULT __stdcall()>(name)(); }
    explicit operator bool() const { return module_ != nullptr; }

  private:
    HMODULE module_;
};

}  // namespace dravik::test
