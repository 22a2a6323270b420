#include "windows/com/Variant.h"

#include <cstring>
#include <utility>

#include "base/Conversions.h"
#include "windows/com/Boundary.h"

namespace dravik::com {
namespace {

// Where the value of a VARIANT lies, referred to or not.
const void* payload(const VARIANT& value) noexcept {
    return value.vt & VT_BYREF ? value.byref : static_cast<const void*>(&value.llVal);
}

template <typename T>
double read(const VARIANT& value) {
    T result;
    std::memcpy(&result, &required(static_cast<const T*>(payload(value))), sizeof result);
    return static_cast<double>(result);
}

double decimal(const VARIANT& value) {
    double result = 0;
    DECIMAL number = value.vt & VT_BYREF ? required(value.pdecVal) : value.decVal;
    check(VarR8FromDec(&number, &result));
    return result;
}

template <typename T>
T* objectIn(const VARIANT& value) noexcept {
    T* const* place = static_cast<T* const*>(payload(value));
    return place ? *place : nullptr;
}

}  // namespace

Variant::Variant(std::int32_t number) : Variant() {
    value_.vt = VT_I4;
    value_.lVal = number;
}

Variant::Variant(std::int16_t number) : Variant() {
    value_.vt = VT_I2;
    value_.iVal = number;
}

Variant::Variant(double number) : Variant() {
    value_.vt = VT_R8;
    value_.dblVal = number;
}

Variant::Variant(Bstr text) : Variant() {
    value_.vt = VT_BSTR;
    value_.bstrVal = text.detach();
}

Variant::Variant(bool truth) : Variant() {
    value_.vt = VT_BOOL;
    value_.boolVal = truth ? VARIANT_TRUE : VARIANT_FALSE;
}

Variant::Variant(IDispatch* object) : Variant() {
    value_.vt = VT_DISPATCH;
    value_.pdispVal = object;
    if (object) object->AddRef();
}

Variant::Variant(Variant&& other) noexcept : value_(other.detach()) {}

Variant& Variant::operator=(Variant&& other) noexcept {
    if (this != &other) *put() = other.detach();
    return *this;
}

Variant Variant::ofArray(VARTYPE elements, SAFEARRAY* array) {
    Variant result;
    result.value_.vt = static_cast<VARTYPE>(VT_ARRAY | elements);
    result.value_.parray = array;
    return result;
}

VARIANT* Variant::put() noexcept {
    VariantClear(&value_);
    return &value_;
}

VARIANT Variant::detach() noexcept {
    const VARIANT result = value_;
    VariantInit(&value_);
    return result;
}

const VARIANT& innermost(const VARIANT& value) noexcept {
    const VARIANT* at = &value;
    while (at->vt == (VT_BYREF | VT_VARIANT) && at->pvarVal) at = at->pvarVal;
    return *at;
}

bool isNothing(const VARIANT& value) noexcept {
    const VARIANT& inner = innermost(value);
    if (inner.vt & VT_ARRAY) {
        SAFEARRAY* const* place = static_cast<SAFEARRAY* const*>(payload(inner));
        const SAFEARRAY* array = place ? *place : nullptr;
        if (!array) return true;
        for (USHORT dimension = 0; dimension < array->cDims; ++dimension)
            if (array->rgsabound[dimension].cElements == 0) return true;
        return array->cDims == 0;
    }
    switch (inner.vt & VT_TYPEMASK) {
        case VT_EMPTY:
        case VT_NULL:
        case VT_ERROR:
            return true;
        case VT_DISPATCH:
            return !objectIn<IDispatch>(inner);
        case VT_UNKNOWN:
            return !objectIn<IUnknown>(inner);
        default:
            return false;
    }
}

bool isObject(const VARIANT& value) noexcept {
    const int type = innermost(value).vt & ~VT_BYREF;
    return type == VT_DISPATCH || type == VT_UNKNOWN;
}

tool::Cell cellOf(const VARIANT& value) {
    const VARIANT& inner = innermost(value);
    if (inner.vt & (VT_ARRAY | VT_VECTOR)) throw Failure(RuntimeError::TypeMismatch);
    switch (inner.vt & VT_TYPEMASK) {
        case VT_EMPTY:
        case VT_NULL:
        case VT_ERROR:
            return {};
        case VT_R8:
        case VT_DATE:
            return read<double>(inner);
        case VT_R4:
            return read<float>(inner);
        case VT_I4:
        case VT_INT:
            return read<std::int32_t>(inner);
        case VT_I2:
            return read<std::int16_t>(inner);
        case VT_I1:
            return read<std::int8_t>(inner);
        case VT_UI1:
            return read<std::uint8_t>(inner);
        case VT_UI2:
            return read<std::uint16_t>(inner);
        case VT_UI4:
        case VT_UINT:
            return read<std::uint32_t>(inner);
        case VT_I8:
            return read<std::int64_t>(inner);
        case VT_UI8:
            return read<std::uint64_t>(inner);
        case VT_BOOL:
            return read<VARIANT_BOOL>(inner) != 0 ? -1.0 : 0.0;
        case VT_CY:
            return read<std::int64_t>(inner) / 10000;
        case VT_DECIMAL:
            return decimal(inner);
        case VT_BSTR:
            return toUtf8(required(static_cast<const BSTR*>(payload(inner))));
        default:
            throw Failure(RuntimeError::TypeMismatch);
    }
}

double numberOf(const VARIANT& value) {
    const VARIANT& inner = innermost(value);
    return inner.vt == VT_EMPTY ? 0 : tool::cellNumber(cellOf(inner));
}

std::int32_t int32Of(const VARIANT& value) {
    return toInt32(numberOf(value));
}

bool truthOf(const VARIANT& value) {
    return numberOf(value) != 0;
}

std::string textOf(const VARIANT& value) {
    return tool::cellText(cellOf(value));
}

ComPtr<IUnknown> objectOf(const VARIANT& value) {
    const VARIANT& inner = innermost(value);
    if (isNothing(inner) && !(inner.vt & VT_ARRAY)) return nullptr;
    const int type = inner.vt & ~VT_BYREF;
    if (type == VT_DISPATCH) return ComPtr<IUnknown>(objectIn<IDispatch>(inner));
    if (type == VT_UNKNOWN) return ComPtr<IUnknown>(objectIn<IUnknown>(inner));
    throw Failure(RuntimeError::TypeMismatch);
}

}  // namespace dravik::com
