// The bodies of the DLL's exports that hand out objects.
#pragma once

#include <span>

#include "windows/server/RegisteredClass.h"

namespace dravik::server {

// DllGetClassObject: CLASS_E_CLASSNOTAVAILABLE for a class that is not among them. The classes outlive the
// factories.
HRESULT classObject(std::span<const RegisteredClass> classes, REFCLSID identifier, REFIID iid,
                    void** out) noexcept;

// DllCanUnloadNow: S_OK when nobody holds an object, a factory or a lock.
HRESULT canUnloadNow() noexcept;

}  // namespace dravik::server
