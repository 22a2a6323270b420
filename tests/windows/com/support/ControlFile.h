// The control's file, which also holds the embedded step, loaded.
#pragma once

#include <stdexcept>
#include <string>

#include "windows/com/ComPtr.h"

namespace dravik::test {

class ControlFile {
  public:
    explicit ControlFile(const std::wstring& path) : module_(LoadLibraryW(path.c_str())) {
        if (!module_) throw std::runtime_error("DravikDlg.ocx cannot be loaded");
    }
    ~ControlFile() { FreeLibrary(module_); }
    ControlFile(const ControlFile&) = delete;
    ControlFile& operator=(const ControlFile&) = delete;

    template <typename Function>
    Function* find(const char* name) const {
        return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module_, name)));
    }
    // Calls an export without arguments.
    HRESULT operator()(const char* name) const { return find<HRESULT __stdcall()>(name)(); }
    // Made without the registry; null when the class cannot be made.
    com::ComPtr<IUnknown> make(REFCLSID identifier) const {
        com::ComPtr<IClassFactory> factory;
        com::ComPtr<IUnknown> object;
        find<HRESULT __stdcall(REFCLSID, REFIID, void**)>("DllGetClassObject")(identifier, IID_IClassFactory,
                                                                               factory.putVoid());
        if (factory) factory->CreateInstance(nullptr, IID_IUnknown, object.putVoid());
        return object;
    }

  private:
    HMODULE module_;
};

}  // namespace dravik::test
