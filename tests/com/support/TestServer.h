// The test server's DLL, beside the program.
#pragma once

#include "activex/com/Module.h"

namespace dravik::test {

class TestServer {
  public:
    TestServer() : module_(LoadLibraryW((folder() + L"\\TestServer.dll").c_str())) {}
    ~TestServer() {
        if (module_) FreeLibrary(module_);
    }
    TestServer(const TestServer&) = delete;
    TestServer& operator=(const TestServer&) = delete;

    static std::wstring folder() {
        const std::wstring path = modulePath();
        return path.substr(0, path.find_last_of(L"\\/"));
    }
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
