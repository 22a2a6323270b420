// An object that is called by the names of its members, as scripts offer it.
#pragma once

#include <map>
#include <span>
#include <string>
#include <vector>

#include <dispex.h>
#include "windows/com/ComPtr.h"
#include "windows/com/Variant.h"

namespace dravik::com {

class LateBound {
  public:
    // Raises Type mismatch (13) when the object cannot be called by names.
    explicit LateBound(IUnknown* object);

    bool has(const std::wstring& name);
    // Calls the method, or reads the property, of that name. Raises Failure with the number and text that the
    // object gave, and 438 when it has no such member.
    Variant call(const std::wstring& name, std::span<Variant> arguments = {});
    // Reads a property only: a script's plain value cannot be called, and trying to has its host report an
    // error.
    Variant property(const std::wstring& name);
    // Sets a property.
    void put(const std::wstring& name, Variant value);
    // The value that stands for the object itself.
    Variant defaultValue();

  private:
    bool find(const std::wstring& name, DISPID& id);
    DISPID idOf(const std::wstring& name);
    Variant invoke(DISPID id, WORD flags, std::span<Variant> arguments, DISPPARAMS named = {});

    ComPtr<IDispatch> object_;
    ComPtr<IDispatchEx> scriptObject_;  // script classes answer this one only
    std::map<std::wstring, DISPID> ids_;
};

// The elements of an object that a script means as an array (its members "length", "0", "1", ...).
std::vector<Variant> elementsOf(IUnknown* scriptArray);

}  // namespace dravik::com
