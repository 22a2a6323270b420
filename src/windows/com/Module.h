// The DLL or program that this code is part of: how many of its objects are alive, and the type libraries in
// it.
#pragma once

#include <atomic>
#include <string>

#include "windows/com/ComPtr.h"

namespace dravik::com {

// Objects that others hold; the module must stay loaded while there are any.
std::atomic<long>& moduleObjects() noexcept;

// A member of every object that others hold.
class ModuleReference {
  public:
    ModuleReference() noexcept { ++moduleObjects(); }
    ModuleReference(const ModuleReference&) = delete;
    ModuleReference& operator=(const ModuleReference&) = delete;
    ~ModuleReference() { --moduleObjects(); }
};

HMODULE thisModule() noexcept;
// Path of its file.
std::wstring modulePath();

// Type libraries are resources of the module, 1 and up.
constexpr int kTypeLibraries = 4;
ComPtr<ITypeLib> typeLibrary(int resource);
// The description of an interface or class in any of them; raises Failure when it is in none.
ComPtr<ITypeInfo> typeInfoOf(REFGUID identifier);

}  // namespace dravik::com
