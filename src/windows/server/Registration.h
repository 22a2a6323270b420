// What the server enters in the registry: its classes, its type libraries and their interfaces.
//
// Registration is a transaction: when any entry cannot be made, none is. Interfaces that another library has
// registered are left to it. Taking the entries away leaves what others have put below the same keys.
#pragma once

#include <span>
#include <vector>

#include "windows/server/RegisteredClass.h"

namespace dravik::server {

// Where to register: the keys "Software\Classes" of the machine and of the user.
enum class Scope { Machine, User };

// Raise Failure with the system's code.
void registerServer(std::span<const RegisteredClass> classes, Scope scope);
void unregisterServer(std::span<const RegisteredClass> classes, Scope scope);

// DllRegisterServer: for the machine, or for the user where that is refused.
HRESULT registerServer(std::span<const RegisteredClass> classes) noexcept;
// DllUnregisterServer: wherever it is registered.
HRESULT unregisterServer(std::span<const RegisteredClass> classes) noexcept;
// DllInstall: as above, for the user alone when the command line is "user".
HRESULT installServer(std::span<const RegisteredClass> classes, bool install,
                      const wchar_t* commandLine) noexcept;

// A value that registration sets, below the root; exposed for installers.
struct RegistryEntry {
    std::wstring key;
    std::wstring name;  // "" for the default value
    std::wstring text;
    std::wstring top;  // the first key of it, which others use as well
};
// The entries of the classes, type libraries and interfaces. Raises Failure when the module lacks a type
// library.
std::vector<RegistryEntry> registryEntries(std::span<const RegisteredClass> classes);

}  // namespace dravik::server
