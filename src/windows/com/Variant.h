// Values as COM passes them, and what they mean to the system.
#pragma once

#include <string>

#include "tool/RecordTable.h"
#include "windows/com/ComPtr.h"
#include "windows/com/ComText.h"

namespace dravik::com {

// An owned VARIANT.
class Variant {
  public:
    Variant() { VariantInit(&value_); }
    explicit Variant(std::int32_t number);
    explicit Variant(std::int16_t number);
    explicit Variant(double number);
    explicit Variant(Bstr text);
    explicit Variant(bool truth);
    // Counts the object once more; a null pointer is Nothing.
    explicit Variant(IDispatch* object);
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;
    Variant(Variant&& other) noexcept;
    Variant& operator=(Variant&& other) noexcept;
    ~Variant() { VariantClear(&value_); }

    // Takes over an array of that element type.
    static Variant ofArray(VARTYPE elements, SAFEARRAY* array);

    const VARIANT& get() const noexcept { return value_; }
    VARIANT& get() noexcept { return value_; }
    // Where a function leaves a value; the one held before is given up.
    VARIANT* put() noexcept;
    VARIANT detach() noexcept;

  private:
    VARIANT value_;
};

// The value itself where it is only referred to (VT_BYREF | VT_VARIANT, to any depth that a caller may pass).
const VARIANT& innermost(const VARIANT& value) noexcept;

// Empty, Null, an omitted argument, Nothing, an array without elements.
bool isNothing(const VARIANT& value) noexcept;

// An object or Nothing.
bool isObject(const VARIANT& value) noexcept;

// A number, a text or nothing; truth values are -1 and 0, dates and currencies their numbers. Raises Type
// mismatch (13) for objects and arrays.
tool::Cell cellOf(const VARIANT& value);

// Empty is 0; texts must be numbers. Raise Type mismatch (13), and Overflow (6) outside the type's range.
double numberOf(const VARIANT& value);
std::int32_t int32Of(const VARIANT& value);
bool truthOf(const VARIANT& value);
// Numbers as their shortest text, Empty and Null as "".
std::string textOf(const VARIANT& value);
// The object, nothing for Nothing and Empty; raises Type mismatch (13) for anything else.
ComPtr<IUnknown> objectOf(const VARIANT& value);

}  // namespace dravik::com
